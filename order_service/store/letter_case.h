#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cartonpick::orders {

/// The text in UTF-8 as it is, in small letters, in capitals, and with a capital at the start of
/// each word, each of them once: for databases that know the case of ASCII alone. ASCII letters are
/// small in all of them.
std::vector<std::string> caseVariants(std::string_view text);

}  // namespace cartonpick::orders
