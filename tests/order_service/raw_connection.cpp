#include "raw_connection.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace cartonpick::orders {

namespace {

class LoopbackSocket {
 public:
  explicit LoopbackSocket(std::uint16_t port)
      : m_descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(m_descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) !=
        0) {
      throw std::system_error(errno, std::generic_category(), "connect");
    }
  }
  LoopbackSocket(const LoopbackSocket &) = delete;
  LoopbackSocket &operator=(const LoopbackSocket &) = delete;
  ~LoopbackSocket() { ::close(m_descriptor); }

  void sendAll(const std::string &bytes) const {
    if (::send(m_descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL) !=
        static_cast<ssize_t>(bytes.size())) {
      throw std::system_error(errno, std::generic_category(), "send");
    }
  }

  std::string receiveAll() const {
    std::string received;
    std::array<char, 4096> buffer{};
    ssize_t size = 0;
    while ((size = ::recv(m_descriptor, buffer.data(), buffer.size(), 0)) > 0) {
      received.append(buffer.data(), static_cast<std::size_t>(size));
    }
    return received;
  }

 private:
  int m_descriptor;
};

}  // namespace

std::string exchangeRaw(std::uint16_t port, const std::string &bytes) {
  const LoopbackSocket socket(port);
  socket.sendAll(bytes);
  return socket.receiveAll();
}

}  // namespace cartonpick::orders
