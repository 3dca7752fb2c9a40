#include "http/http_response.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <utility>

namespace cartonpick::orders {

namespace {

namespace http = boost::beast::http;

constexpr unsigned kHttp11 = 11;

/// The time now as an IMF-fixdate (RFC 9110).
std::string httpDate() {
  constexpr std::size_t kMaxBytes = 100;
  constexpr int kFirstYear = 1900;
  const std::time_t now = std::time(nullptr);
  std::tm utc{};
  ::gmtime_r(&now, &utc);
  constexpr std::array kDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::array<char, kMaxBytes> text{};
  std::snprintf(text.data(), text.size(), "%s, %02d %s %04d %02d:%02d:%02d GMT",
                kDays.at(static_cast<std::size_t>(utc.tm_wday)), utc.tm_mday,
                kMonths.at(static_cast<std::size_t>(utc.tm_mon)), utc.tm_year + kFirstYear,
                utc.tm_hour, utc.tm_min, utc.tm_sec);
  return text.data();
}

}  // namespace

http::response<http::string_body> responseOf(Answer answer, const std::string &requestId,
                                             const ResponseTraits &traits) {
  http::response<http::string_body> response(http::int_to_status(answer.status), kHttp11);
  response.result(static_cast<unsigned>(answer.status));
  response.set(http::field::date, httpDate());
  if (!answer.contentType.empty()) {
    response.set(http::field::content_type, answer.contentType);
  }
  if (answer.allow) {
    response.set(http::field::allow, *answer.allow);
  }
  for (const auto &[name, value] : answer.headers) {
    response.insert(name, value);
  }
  response.set("X-Request-Id", requestId);
  if (!traits.keepsConnection) {
    response.set(http::field::connection, "close");
  } else if (traits.isToHttp10) {
    response.set(http::field::connection, "keep-alive");
  }
  // With "not modified" the length would be that of the file that is not sent.
  if (response.result() != http::status::not_modified) {
    response.content_length(answer.body.size());
  }
  if (!traits.isToHead) {
    response.body() = std::move(answer.body);
  }
  return response;
}

}  // namespace cartonpick::orders
