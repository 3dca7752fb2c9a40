#include "http/percent_decoding.h"

#include <charconv>

namespace cartonpick::orders {

namespace {

std::optional<char> byteOf(std::string_view hexDigits) {
  unsigned char byte = 0;
  const char *const end = hexDigits.data() + hexDigits.size();
  const auto [rest, error] = std::from_chars(hexDigits.data(), end, byte, 16);
  const bool isWhole = hexDigits.size() == 2 && error == std::errc() && rest == end;
  return isWhole ? std::optional(static_cast<char>(byte)) : std::nullopt;
}

}  // namespace

std::optional<std::string> percentDecoded(std::string_view segment) {
  std::string decoded;
  while (!segment.empty()) {
    const std::optional<char> byte =
        segment.front() == '%' ? byteOf(segment.substr(1, 2)) : segment.front();
    if (!byte) {
      return std::nullopt;
    }
    decoded += *byte;
    segment.remove_prefix(segment.front() == '%' ? 3 : 1);
  }
  return decoded;
}

}  // namespace cartonpick::orders
