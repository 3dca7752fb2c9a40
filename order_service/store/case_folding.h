#pragma once

#include <string>
#include <string_view>

namespace cartonpick::orders {

/// Returns the UTF-8 text after Unicode's full case folding, which makes texts equal that differ
/// only in case ("Straße" and "STRASSE"). It does not depend on the language. Invalid bytes become
/// U+FFFD.
std::string caseFolded(std::string_view text);

}  // namespace cartonpick::orders
