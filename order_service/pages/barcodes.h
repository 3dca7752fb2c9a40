#pragma once

#include <string>

namespace cartonpick::orders {

/// The text as an inline SVG barcode of Code 128, with its quiet zones. No text if Code 128 can't
/// hold it: it takes at most 60 characters of printable ASCII here.
std::string code128(const std::string &text);

/// The code as an EAN-13 if it is one, else as Code 128.
std::string articleBarcode(const std::string &code);

}  // namespace cartonpick::orders
