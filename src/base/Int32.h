#pragma once

#include <QStringView>

#include <cstdint>

/// Sum that wraps around at the ends of the 32-bit range instead of being undefined.
constexpr std::int32_t wrappingAdd(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

/// Difference that wraps around at the ends of the 32-bit range instead of being undefined.
constexpr std::int32_t wrappingSubtract(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

/// Reads a text as a quantity: leading white space is skipped, an optional sign is taken, then
/// decimal digits up to the first other character. No digits read as 0; what lies beyond the
/// 32-bit range reads as the nearest limit.
std::int32_t intValue(QStringView text);

/// A whole number clamped to the 32-bit range.
std::int32_t clampToInt32(double value);
