#pragma once

#include "http/http_message.h"

#include <chrono>
#include <functional>
#include <mutex>

namespace cartonpick::orders {

/// Keeps an answer that is expensive to find. May be used from several threads at once, of which
/// one finds the answer while the others wait for it.
class KeptAnswer {
 public:
  using Clock = std::chrono::steady_clock;

  /// How long an answer is kept.
  static constexpr auto kDuration = std::chrono::seconds(1);

  explicit KeptAnswer(std::function<Answer()> find,
                      std::function<Clock::time_point()> now = Clock::now);

  /// Returns the answer that is kept, or finds another one. Throws what finding it throws.
  Answer answer();

 private:
  std::function<Answer()> m_find;
  std::function<Clock::time_point()> m_now;
  std::mutex m_mutex;
  Answer m_answer;
  Clock::time_point m_end = Clock::time_point::min();
};

}  // namespace cartonpick::orders
