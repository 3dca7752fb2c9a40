#pragma once

#include <cstdint>
#include <string>

namespace cartonpick::orders {

/// A connection to a loopback port, for bytes that need not be HTTP. Throws std::system_error.
class RawConnection {
 public:
  explicit RawConnection(std::uint16_t port);
  RawConnection(const RawConnection &) = delete;
  RawConnection &operator=(const RawConnection &) = delete;
  ~RawConnection();

  void sendAll(const std::string &bytes) const;
  /// All that comes until the other side ends.
  std::string receiveAll() const;

 private:
  int m_descriptor;
};

/// Sends the bytes to a loopback port and returns all that comes back until the other side ends.
std::string exchangeRaw(std::uint16_t port, const std::string &bytes);

}  // namespace cartonpick::orders
