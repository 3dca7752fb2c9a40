#pragma once

#include <string>
#include <string_view>

namespace cartonpick::orders {

/// The check digit ('0' to '9') of an EAN-13 whose first twelve digits are given.
/// `digits` has exactly 12 decimal digits.
char ean13CheckDigit(std::string_view digits);

/// The EAN-13 (13 digits) that starts with the 12 given ones.
std::string ean13(std::string_view digits);

}  // namespace cartonpick::orders
