#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace soci {
class session;
}

namespace cartonpick::orders {

/// Returns the text in which a search looks for a delivery: its number and its customer after case
/// folding.
std::string searchTextOf(std::string_view number, std::string_view customer);

/// The condition that a search finds a row of `delivery`. It takes numberPattern() and
/// customerPattern() of the search.
inline constexpr auto kIsFound =
    "(search_text LIKE :number ESCAPE '!' OR search_text LIKE :customer ESCAPE '!')";

/// The pattern of the deliveries whose number starts with the text.
std::string numberPattern(std::string_view search);

/// The pattern of the deliveries whose customer has the text anywhere in the name.
std::string customerPattern(std::string_view search);

/// Returns true if a delivery has no search text or that of a former customer: programs of an older
/// version do not write it, and neither does a report of a delivery that is not ordered. Throws
/// soci::soci_error.
bool hasOutdatedSearchTexts(soci::session &session);

/// Writes the search texts of up to 1,000 such deliveries, in the order of their numbers, beginning
/// after the number `after`. To be called in a transaction. Returns the last of their numbers,
/// nothing if there are none. Throws soci::soci_error.
std::optional<std::string> updateSearchTexts(soci::session &session, const std::string &after);

}  // namespace cartonpick::orders
