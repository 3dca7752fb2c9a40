#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace cartonpick::orders {

/// A connection to a loopback port, for bytes that need not be HTTP. Throws std::system_error.
class RawConnection {
 public:
  /// @param receiveBytes  how much the system receives before it is read; 0 for the default
  explicit RawConnection(std::uint16_t port, int receiveBytes = 0);
  RawConnection(const RawConnection &) = delete;
  RawConnection &operator=(const RawConnection &) = delete;
  ~RawConnection();

  void sendAll(const std::string &bytes) const;
  /// The same; does nothing if the other side takes nothing any more.
  void trySend(const std::string &bytes) const;
  /// Tells the other side that nothing more is sent.
  void endSending() const;
  /// Waits for bytes, or for the other side's end. Returns false if neither comes in that time.
  bool waitForBytes(std::chrono::milliseconds time) const;
  /// The next bytes that come; empty if the other side ends.
  std::string receiveSome() const;
  /// All that comes until the other side ends.
  std::string receiveAll() const;

 private:
  int m_descriptor;
};

/// Sends the bytes to a loopback port and returns all that comes back until the other side ends.
std::string exchangeRaw(std::uint16_t port, const std::string &bytes);

}  // namespace cartonpick::orders
