#include "systemd_notifier.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace cartonpick::orders {

namespace {

std::string_view environment(const char *name) {
  const char *value = std::getenv(name);
  return value == nullptr ? std::string_view() : value;
}

/// The number of a variable of the environment; 0 if it is not set, or no number.
long long numberOf(const char *name) {
  const std::string_view text = environment(name);
  long long number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

/// Returns a socket that is connected to the path, or to the abstract name after '@'; -1 if there
/// is none.
int connectTo(std::string_view path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.empty() || path.size() >= sizeof address.sun_path) {
    return -1;
  }
  std::copy(path.begin(), path.end(), address.sun_path);
  if (path.front() == '@') {
    address.sun_path[0] = '\0';
  }
  const int descriptor = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size());
  if (descriptor >= 0 &&
      ::connect(descriptor, reinterpret_cast<const sockaddr *>(&address), size) != 0) {
    ::close(descriptor);
    return -1;
  }
  return descriptor;
}

}  // namespace

SystemdNotifier::SystemdNotifier() : m_socket(connectTo(environment("NOTIFY_SOCKET"))) {
  const long long watchedProcess = numberOf("WATCHDOG_PID");
  if (watchedProcess == 0 || watchedProcess == ::getpid()) {
    m_interval = std::chrono::microseconds(numberOf("WATCHDOG_USEC") / 3);
  }
}

SystemdNotifier::~SystemdNotifier() {
  if (m_socket >= 0) {
    ::close(m_socket);
  }
}

void SystemdNotifier::ready() const {
  send("READY=1");
}

void SystemdNotifier::stopping() const {
  send("STOPPING=1");
}

void SystemdNotifier::keepAlive() {
  const Clock::time_point now = Clock::now();
  if (m_interval.count() > 0 && now >= m_nextSign.load()) {
    m_nextSign = now + m_interval;
    send("WATCHDOG=1");
  }
}

void SystemdNotifier::send(const std::string &message) const {
  if (m_socket >= 0) {
    // systemd takes the messages that it needs; there is nothing to do about one that is lost.
    static_cast<void>(
        ::send(m_socket, message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT));
  }
}

}  // namespace cartonpick::orders
