#pragma once

#include <chrono>
#include <iosfwd>
#include <map>
#include <mutex>
#include <string>

namespace cartonpick::orders {

/// Writes what failed and why, for the operator. May be called from several threads at once.
class ErrorLog {
 public:
  /// A text that was written within this time is not written again.
  static constexpr auto kRepeat = std::chrono::seconds(10);

  /// The stream must outlive the log.
  explicit ErrorLog(std::ostream &out) : m_out(out) {}

  /// Writes the text as a line.
  void write(const std::string &text);

 private:
  using Clock = std::chrono::steady_clock;

  std::mutex m_mutex;
  std::ostream &m_out;
  std::map<std::string, Clock::time_point> m_written;
};

}  // namespace cartonpick::orders
