#pragma once

#include <chrono>

namespace cartonpick::orders {

/// A request from outside that this process end: SIGTERM, SIGINT and, when it is to end with its
/// parent, the parent's death or the end of standard input.
class StopRequest {
 public:
  /// Blocks the signals for this thread and the threads that it starts later, so that it must be
  /// made before any. Throws std::system_error.
  explicit StopRequest(bool endWithParent);
  StopRequest(const StopRequest &) = delete;
  StopRequest &operator=(const StopRequest &) = delete;
  ~StopRequest();

  /// Returns once the request came; what arrives on standard input until then is dropped.
  void wait() const;

  /// Waits for a signal for at most that time. Returns true if there is one, which wait() then
  /// finds.
  bool waitFor(std::chrono::milliseconds time) const;

 private:
  bool m_endWithParent;
  int m_signals;
};

}  // namespace cartonpick::orders
