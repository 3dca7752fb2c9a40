#include "pages/html_page.h"

#include "pages/assets.h"
#include "pages/html.h"

#include <ctime>
#include <iomanip>
#include <sstream>
#include <string_view>

namespace cartonpick::orders {

namespace {

std::string styleLink(const std::string &path) {
  return R"(<link rel="stylesheet" href=")" + path + "\">\n";
}

std::string headOf(PageKind kind, const std::string &title) {
  return "<meta charset=\"utf-8\">\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         "<meta name=\"referrer\" content=\"same-origin\">\n"
         "<title>" +
         escaped(title) + " – CartonPick</title>\n<link rel=\"icon\" href=\"" +
         assetPath("icon.svg") + "\">\n" +
         styleLink(assetPath(kind == PageKind::Sheet ? "sheet.css" : "screen.css")) +
         (kind == PageKind::Live ? "<script src=\"" + assetPath("live.js") + "\" defer></script>\n"
                                 : std::string());
}

std::string shown(std::time_t time, const char *format) {
  std::tm parts{};
  ::localtime_r(&time, &parts);
  std::ostringstream text;
  text << std::put_time(&parts, format);
  return text.str();
}

/// How a state is called, drawn and named in the style.
struct StateWords {
  std::string_view word;
  std::string_view sign;
  std::string_view colour;
};

StateWords wordsOf(DeliveryState state) {
  switch (state) {
    case DeliveryState::Open:
      return {"open", "○", "blue"};
    case DeliveryState::Complete:
      return {"complete", "✓", "green"};
    case DeliveryState::Short:
      return {"short", "−", "red"};
    case DeliveryState::Over:
      return {"over", "+", "yellow"};
    case DeliveryState::ShortAndOver:
      return {"short and over", "±", "red"};
    case DeliveryState::Withdrawn:
      break;
  }
  return {"withdrawn", "×", "grey"};
}

}  // namespace

Answer htmlAnswer(int status, PageKind kind, const std::string &title, const std::string &body,
                  const std::string &stylePath) {
  return {.status = status,
          .contentType = "text/html; charset=utf-8",
          .body = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n" + headOf(kind, title) +
                  (stylePath.empty() ? "" : styleLink(stylePath)) + "</head>\n<body>\n" + body +
                  "</body>\n</html>\n"};
}

Answer messagePage(int status, const std::string &title, const std::string &message) {
  return htmlAnswer(status, PageKind::Plain, title,
                    barElement() +
                        "<main>\n<nav><p><a href=\"/\">← All deliveries</a></p></nav>\n"
                        "<div class=\"head\"><h1>" +
                        escaped(title) + "</h1></div>\n<div class=\"card\"><p class=\"none\">" +
                        escaped(message) + "</p></div>\n</main>\n");
}

std::string barElement() {
  return "<div class=\"bar\"><a href=\"/\">CartonPick</a></div>\n";
}

std::string updatedParagraph() {
  return R"(<p class="updated"><span id="updated" data-live>Updated <time>)" +
         shown(std::time(nullptr), "%T") +
         "</time></span> <strong role=\"status\" class=\"no-answer\">No answer since then</strong>"
         "</p>\n";
}

std::string timeElement(const std::string &utc) {
  std::tm parts{};
  std::istringstream(utc) >> std::get_time(&parts, "%Y-%m-%d %H:%M:%S");
  if (parts.tm_year == 0) {
    return {};
  }
  const std::string machine = utc.substr(0, 10) + 'T' + utc.substr(11, 8) + 'Z';
  return "<time datetime=\"" + escaped(machine) + "\">" + shown(::timegm(&parts), "%F %H:%M") +
         "</time>";
}

std::string stateElement(DeliveryState state) {
  const StateWords words = wordsOf(state);
  return "<span class=\"state " + std::string(words.colour) + R"("><span aria-hidden="true">)" +
         std::string(words.sign) + "</span> " + std::string(words.word) + "</span>";
}

std::string figure(std::int64_t number) {
  return number < 0 ? "−" + std::to_string(number).substr(1) : std::to_string(number);
}

std::string signedFigure(std::int64_t number) {
  return number > 0 ? '+' + std::to_string(number) : figure(number);
}

std::string counted(std::size_t count, const std::string &one, const std::string &many) {
  return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

}  // namespace cartonpick::orders
