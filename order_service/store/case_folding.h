#pragma once

#include <string>
#include <string_view>

namespace cartonpick::orders {

/// Returns the UTF-8 text with Unicode's full case folding: texts that differ in case only become
/// equal ("Straße" and "STRASSE"), in every language but by the rules of none. Invalid bytes become
/// U+FFFD.
std::string caseFolded(std::string_view text);

}  // namespace cartonpick::orders
