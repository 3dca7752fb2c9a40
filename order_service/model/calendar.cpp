#include "model/calendar.h"

#include <algorithm>
#include <charconv>
#include <chrono>

namespace cartonpick::orders {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Returns true if the text has a digit where the form has a '0', and otherwise the same
/// characters.
bool hasForm(std::string_view text, std::string_view form) {
  return std::equal(text.begin(), text.end(), form.begin(), form.end(),
                    [](char c, char f) { return f == '0' ? isDigit(c) : c == f; });
}

unsigned number(std::string_view digits) {
  unsigned value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

bool isDay(std::string_view year, std::string_view month, std::string_view day) {
  using namespace std::chrono;
  const auto theYear = static_cast<int>(number(year));
  const year_month_day date{std::chrono::year{theYear}, std::chrono::month{number(month)},
                            std::chrono::day{number(day)}};
  return theYear > 0 && date.ok();
}

}  // namespace

bool isDate(std::string_view text) {
  return hasForm(text, "00/00/0000") &&
         isDay(text.substr(6, 4), text.substr(0, 2), text.substr(3, 2));
}

bool isDateTime(std::string_view text) {
  return hasForm(text, "0000-00-00 00:00:00") &&
         isDay(text.substr(0, 4), text.substr(5, 2), text.substr(8, 2)) &&
         number(text.substr(11, 2)) < 24 && number(text.substr(14, 2)) < 60 &&
         number(text.substr(17, 2)) < 60;
}

std::string isoDate(std::string_view text) {
  const std::string day(text);
  return isDate(text) ? day.substr(6, 4) + '-' + day.substr(0, 2) + '-' + day.substr(3, 2) : day;
}

}  // namespace cartonpick::orders
