#include "http/kept_answer.h"

#include <utility>

namespace cartonpick::orders {

KeptAnswer::KeptAnswer(std::function<Answer()> find, std::function<Clock::time_point()> now)
    : m_find(std::move(find)), m_now(std::move(now)) {}

Answer KeptAnswer::answer() {
  const std::lock_guard lock(m_mutex);
  if (m_now() >= m_end) {
    m_answer = m_find();
    // From the end of the search: who waited for it gets its answer.
    m_end = m_now() + kDuration;
  }
  return m_answer;
}

}  // namespace cartonpick::orders
