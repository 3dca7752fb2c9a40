#pragma once

#include <QStringView>

#include <cstdint>

/// The sum modulo 2^32; overflow wraps around.
constexpr std::int32_t wrappingAdd(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

/// The difference modulo 2^32; overflow wraps around.
constexpr std::int32_t wrappingSubtract(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

/// Parses a quantity: optional leading white space, an optional sign, then decimal digits up to the
/// first other character. Returns 0 if there are no digits; clamps to the 32-bit range.
std::int32_t intValue(QStringView text);

/// Returns `value` clamped to the 32-bit range and truncated to an integer; 0 for NaN.
std::int32_t clampToInt32(double value);
