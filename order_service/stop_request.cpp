#include "stop_request.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <system_error>
#include <unistd.h>

namespace cartonpick::orders {

namespace {

[[noreturn]] void throwErrno(const char *what) {
  throw std::system_error(errno, std::generic_category(), what);
}

int openSignals() {
  sigset_t signals{};
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  const int descriptor = ::signalfd(-1, &signals, SFD_CLOEXEC);
  if (descriptor < 0) {
    throwErrno("signalfd");
  }
  return descriptor;
}

/// Drops what arrived on standard input; whether that was its end.
bool isInputAtEnd() {
  std::array<char, 256> dropped{};
  const ssize_t size = ::read(STDIN_FILENO, dropped.data(), dropped.size());
  return size == 0 || (size < 0 && errno != EINTR && errno != EAGAIN);
}

}  // namespace

StopRequest::StopRequest(bool endWithParent)
    : m_endWithParent(endWithParent), m_signals(openSignals()) {
  // Standard input alone would not do: other children of the parent may hold its writing end open.
  if (m_endWithParent && ::prctl(PR_SET_PDEATHSIG, SIGTERM) != 0) {
    throwErrno("prctl");
  }
}

StopRequest::~StopRequest() {
  ::close(m_signals);
}

void StopRequest::wait() const {
  // poll() passes over a negative descriptor.
  std::array<pollfd, 2> watched{pollfd{m_signals, POLLIN, 0},
                                pollfd{m_endWithParent ? STDIN_FILENO : -1, POLLIN, 0}};
  do {
    if (::poll(watched.data(), watched.size(), -1) < 0 && errno != EINTR) {
      throwErrno("poll");
    }
  } while (watched[0].revents == 0 && (watched[1].revents == 0 || !isInputAtEnd()));
}

bool StopRequest::waitFor(std::chrono::milliseconds time) const {
  pollfd signals{m_signals, POLLIN, 0};
  return ::poll(&signals, 1, static_cast<int>(time.count())) > 0;
}

}  // namespace cartonpick::orders
