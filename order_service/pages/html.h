#pragma once

#include <string>
#include <string_view>

namespace cartonpick::orders {

/// The text for an element or a quoted attribute.
std::string escaped(std::string_view text);

/// The text as one segment of a URL's path.
std::string percentEncoded(std::string_view text);

/// The value of the first parameter of that name in a URL's query, as a form sends it; without one,
/// or if it is not UTF-8, no text. A character U+0000 is left out.
std::string queryParameter(std::string_view target, std::string_view name);

}  // namespace cartonpick::orders
