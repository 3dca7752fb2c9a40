#pragma once

#include <string_view>

namespace cartonpick::orders {

/// Returns true if a store can hold the text: valid UTF-8 without the character U+0000.
bool isStorable(std::string_view text);

}  // namespace cartonpick::orders
