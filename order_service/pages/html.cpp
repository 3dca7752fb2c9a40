#include "pages/html.h"

#include "http/percent_decoding.h"

#include <algorithm>
#include <simdjson.h>

namespace cartonpick::orders {

namespace {

bool isUnreserved(char c) {
  constexpr std::string_view kMarks = "-._~";
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
         kMarks.find(c) != std::string_view::npos;
}

std::string formDecoded(std::string_view value) {
  std::string spaced(value);
  std::replace(spaced.begin(), spaced.end(), '+', ' ');
  std::string text = percentDecoded(spaced).value_or("");
  std::erase(text, '\0');
  return simdjson::validate_utf8(text) ? text : std::string();
}

}  // namespace

std::string escaped(std::string_view text) {
  std::string html;
  for (const char c : text) {
    switch (c) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      case '\'':
        html += "&#39;";
        break;
      default:
        html += c;
    }
  }
  return html;
}

std::string percentEncoded(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string segment;
  for (const char c : text) {
    if (isUnreserved(c)) {
      segment += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    segment += {'%', kDigits[byte / 16], kDigits[byte % 16]};
  }
  return segment;
}

std::string queryParameter(std::string_view target, std::string_view name) {
  const auto mark = target.find('?');
  std::string_view rest = mark == std::string_view::npos ? "" : target.substr(mark + 1);
  while (!rest.empty()) {
    const std::string_view parameter = rest.substr(0, rest.find('&'));
    if (parameter.starts_with(name) && parameter.substr(name.size()).starts_with('=')) {
      return formDecoded(parameter.substr(name.size() + 1));
    }
    rest.remove_prefix(std::min(rest.size(), parameter.size() + 1));
  }
  return {};
}

}  // namespace cartonpick::orders
