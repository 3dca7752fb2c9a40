#include "raw_connection.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace cartonpick::orders {

RawConnection::RawConnection(std::uint16_t port)
    : m_descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
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

std::string RawConnection::receiveAll() const {
  std::string received;
  std::array<char, 4096> buffer{};
  ssize_t size = 0;
  while ((size = ::recv(m_descriptor, buffer.data(), buffer.size(), 0)) > 0) {
    received.append(buffer.data(), static_cast<std::size_t>(size));
  }
  return received;
}

std::string exchangeRaw(std::uint16_t port, const std::string &bytes) {
  const RawConnection connection(port);
  connection.sendAll(bytes);
  return connection.receiveAll();
}

}  // namespace cartonpick::orders
