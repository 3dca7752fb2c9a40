#include "pages/html_page.h"

#include "pages/html.h"
#include "pages/page_style.h"

#include <ctime>
#include <iomanip>
#include <random>
#include <sstream>
#include <string_view>

namespace cartonpick::orders {

namespace {

/// Fetches the page that is shown again and again, and replaces what has changed. What has the
/// focus there gets it again.
constexpr std::string_view kScript = R"js(
const parts = document.querySelectorAll('[data-live]');
const replace = (part, news) => {
  const link = part.contains(document.activeElement) && document.activeElement.getAttribute('href');
  part.replaceChildren(...news.childNodes);
  if (link) part.querySelector(`[href="${CSS.escape(link)}"]`)?.focus();
};
const update = async () => {
  const answer = await fetch(location.href, {cache: 'no-store'});
  if (answer.status === 401) location.reload();
  if (!answer.ok) throw new Error(answer.statusText);
  const page = new DOMParser().parseFromString(await answer.text(), 'text/html');
  for (const part of parts) {
    const news = page.getElementById(part.id);
    if (news.innerHTML !== part.innerHTML) replace(part, news);
  }
};
const keepUpdating = async () => {
  try {
    if (!document.hidden) await update();
    document.body.classList.remove('stale');
  } catch {
    document.body.classList.add('stale');
  }
  setTimeout(keepUpdating, 3000);
};
setTimeout(keepUpdating, 3000);
)js";

constexpr std::string_view kIcon =
    "data:image/svg+xml,%3Csvg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 16 16'%3E"
    "%3Cpath fill='%231550b8' d='M1 5 8 1l7 4v7l-7 4-7-4z'/%3E"
    "%3Cpath fill='none' stroke='white' d='M1.5 5.2 8 9l6.5-3.8M8 9v6.5'/%3E%3C/svg%3E";

/// A word that no one can know before: only the script that has it runs.
std::string newNonce() {
  std::random_device random;
  std::ostringstream nonce;
  nonce << std::hex << std::setfill('0');
  for (int i = 0; i < 4; ++i) {
    nonce << std::setw(8) << random();
  }
  return nonce.str();
}

std::string policyOf(PageKind kind, const std::string &nonce) {
  const std::string policy =
      "default-src 'none'; base-uri 'none'; form-action 'self'; img-src data:; "
      "style-src 'unsafe-inline'";
  return kind == PageKind::Live ? policy + "; connect-src 'self'; script-src 'nonce-" + nonce + '\''
                                : policy;
}

std::string headOf(PageKind kind, const std::string &title, const std::string &nonce) {
  return "<meta charset=\"utf-8\">\n"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"" +
         policyOf(kind, nonce) +
         "\">\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         "<meta name=\"referrer\" content=\"no-referrer\">\n"
         "<title>" +
         escaped(title) + " – CartonPick</title>\n<link rel=\"icon\" href=\"" + std::string(kIcon) +
         "\">\n<style>" + std::string(kind == PageKind::Sheet ? kSheetStyle : kScreenStyle) +
         "</style>\n";
}

std::string scriptOf(PageKind kind, const std::string &nonce) {
  return kind == PageKind::Live
             ? "<script nonce=\"" + nonce + "\">" + std::string(kScript) + "</script>\n"
             : std::string();
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

Answer htmlAnswer(int status, PageKind kind, const std::string &title, const std::string &body) {
  const std::string nonce = newNonce();
  return {.status = status,
          .contentType = "text/html; charset=utf-8",
          .body = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n" + headOf(kind, title, nonce) +
                  "</head>\n<body>\n" + body + scriptOf(kind, nonce) + "</body>\n</html>\n"};
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
