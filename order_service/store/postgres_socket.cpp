#include "store/postgres_socket.h"

#include <array>
#include <csignal>
#include <sys/socket.h>
#include <system_error>
#include <thread>

namespace cartonpick::orders {

PostgresSocket::PostgresSocket(PGconn *connection)
    : m_socket(PQsocket(connection)), m_cancel(PQgetCancel(connection), &PQfreeCancel) {}

PostgresSocket::~PostgresSocket() {
  shutDown();
}

void PostgresSocket::shutDown() const noexcept {
  ::shutdown(m_socket, SHUT_RDWR);
}

namespace {

/// libpq sends a cancellation without MSG_NOSIGNAL: if the server ends at that moment, the signal
/// would end this process.
void blockPipeSignal() noexcept {
  sigset_t signals;
  ::sigemptyset(&signals);
  ::sigaddset(&signals, SIGPIPE);
  ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

}  // namespace

void PostgresSocket::cancel() const noexcept {
  try {
    // libpq waits for the server's answer without a limit, so no other thread may wait for this.
    std::thread([cancel = m_cancel] {
      blockPipeSignal();
      std::array<char, 256> error{};
      PQcancel(cancel.get(), error.data(), error.size());
    }).detach();
  } catch (const std::system_error &) {
    // No thread is to be had; the server ends the statement by its own limit.
  }
}

}  // namespace cartonpick::orders
