#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace cartonpick::orders {

/// A request on its way in, byte by byte. Knows when it is whole, and how much of it to keep.
class IncomingRequest {
 public:
  /// The largest body that is taken.
  static constexpr std::size_t kMaxBodyBytes = std::size_t{16} * 1024 * 1024;
  static constexpr std::size_t kMaxHeadBytes = std::size_t{64} * 1024;

  void append(std::string_view bytes);

  /// Whether nothing of it is to come any more, or nothing more is wanted, because it is too large
  /// or wrong.
  bool isWhole() const { return m_isWhole; }

  /// What came. Of a body that is announced larger than is taken, nothing is kept.
  const std::string &bytes() const { return m_bytes; }
  std::string take() { return std::move(m_bytes); }

 private:
  void readHead();
  void skipChunks();
  void look();

  std::string m_bytes;
  std::size_t m_bodyBegin = 0;  ///< 0 as long as the head is not whole
  std::size_t m_bodyBytes = 0;  ///< what is announced
  std::size_t m_skipped = 0;    ///< bytes of the body that were not kept
  std::size_t m_chunk = 0;      ///< where the next chunk begins
  bool m_isChunked = false;
  bool m_isWhole = false;
};

}  // namespace cartonpick::orders
