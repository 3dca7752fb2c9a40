#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cartonpick::orders {

/// Decodes the %XX of a URL path segment. Nothing when a '%' is not followed by two hex digits.
std::optional<std::string> percentDecoded(std::string_view segment);

}  // namespace cartonpick::orders
