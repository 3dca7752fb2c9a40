#pragma once

#include <chrono>
#include <cstddef>

namespace cartonpick::orders {

inline constexpr std::size_t kKibibyte = 1024;
inline constexpr std::size_t kMebibyte = 1024 * kKibibyte;

/// What the HTTP server takes, and for how long it waits. README.md has the same table.
struct HttpLimits {
  std::size_t targetBytes = 8 * kKibibyte;
  std::size_t headBytes = 64 * kKibibyte;
  std::size_t framingBytes = 4 * kKibibyte;  ///< of a chunk's header, and of the trailer
  std::size_t bodyBytes = 16 * kMebibyte;

  std::size_t connections = 1024;
  /// Connections that wait for their client: idle, with an incomplete request, or with an answer
  /// that the client has not read.
  std::size_t waitingOfOneAddress = 400;
  /// Bytes that these connections hold.
  std::size_t waitingBytes = 64 * kMebibyte;
  /// Complete requests that wait for a thread, for each pool.
  std::size_t queuedRequests = 500;
  std::size_t queuedBytes = 64 * kMebibyte;

  std::chrono::milliseconds idle = std::chrono::seconds(60);
  std::chrono::milliseconds request =
      std::chrono::seconds(30);                                ///< from its first to its last byte
  std::chrono::milliseconds queue = std::chrono::seconds(10);  ///< from its last byte to a thread
  std::chrono::milliseconds handler = std::chrono::seconds(30);  ///< from a thread to the answer
  std::chrono::milliseconds answerStall = std::chrono::seconds(10);  ///< without a byte sent
  std::chrono::milliseconds answer =
      std::chrono::seconds(150);                             ///< from its first to its last byte
  std::chrono::milliseconds stop = std::chrono::seconds(9);  ///< from the stop to the last answer
};

}  // namespace cartonpick::orders
