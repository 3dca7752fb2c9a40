#pragma once

#include <atomic>
#include <chrono>
#include <string>

namespace cartonpick::orders {

/// Tells systemd how the service is (sd_notify(3)). Does nothing where systemd does not ask for it.
/// May be used from several threads at once.
class SystemdNotifier {
 public:
  /// Reads NOTIFY_SOCKET and WATCHDOG_USEC of the environment.
  SystemdNotifier();
  SystemdNotifier(const SystemdNotifier &) = delete;
  SystemdNotifier &operator=(const SystemdNotifier &) = delete;
  ~SystemdNotifier();

  /// The service answers requests.
  void ready() const;
  /// The service ends.
  void stopping() const;
  /// The service works as it should. Any number of calls sends no more messages than the watchdog
  /// needs.
  void keepAlive();

 private:
  using Clock = std::chrono::steady_clock;

  void send(const std::string &message) const;

  int m_socket = -1;
  std::chrono::microseconds m_interval{0};  ///< between two signs of life; 0 without a watchdog
  std::atomic<Clock::time_point> m_nextSign = Clock::time_point::min();
};

}  // namespace cartonpick::orders
