#pragma once

#include <string>
#include <string_view>

namespace cartonpick::orders {

/// Returns true if the text is a day of the calendar, written MM/dd/yyyy.
bool isDate(std::string_view text);

/// Returns true if the text is a time of the calendar, written yyyy-MM-dd HH:mm:ss.
bool isDateTime(std::string_view text);

/// The day MM/dd/yyyy written yyyy-MM-dd (ISO 8601); another text as it is.
std::string isoDate(std::string_view text);

}  // namespace cartonpick::orders
