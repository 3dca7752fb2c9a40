#include "raw_connection.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace cartonpick::orders {

RawConnection::RawConnection(std::uint16_t port, int receiveBytes)
    : m_descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  if (receiveBytes > 0) {
    ::setsockopt(m_descriptor, SOL_SOCKET, SO_RCVBUF, &receiveBytes, sizeof receiveBytes);
  }
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::connect(m_descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
    throw std::system_error(errno, std::generic_category(), "connect");
  }
}

RawConnection::~RawConnection() {
  ::close(m_descriptor);
}

void RawConnection::sendAll(const std::string &bytes) const {
  if (::send(m_descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL) !=
      static_cast<ssize_t>(bytes.size())) {
    throw std::system_error(errno, std::generic_category(), "send");
  }
}

void RawConnection::trySend(const std::string &bytes) const {
  static_cast<void>(::send(m_descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL));
}

void RawConnection::endSending() const {
  ::shutdown(m_descriptor, SHUT_WR);
}

bool RawConnection::waitForBytes(std::chrono::milliseconds time) const {
  pollfd watched = {.fd = m_descriptor, .events = POLLIN, .revents = 0};
  return ::poll(&watched, 1, static_cast<int>(time.count())) > 0;
}

std::string RawConnection::receiveSome() const {
  std::array<char, 4096> buffer{};
  const ssize_t size = ::recv(m_descriptor, buffer.data(), buffer.size(), 0);
  return {buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
}

std::string RawConnection::receiveAll() const {
  std::string received;
  for (std::string some = receiveSome(); !some.empty(); some = receiveSome()) {
    received += some;
  }
  return received;
}

std::string exchangeRaw(std::uint16_t port, const std::string &bytes) {
  const RawConnection connection(port);
  connection.sendAll(bytes);
  return connection.receiveAll();
}

}  // namespace cartonpick::orders
