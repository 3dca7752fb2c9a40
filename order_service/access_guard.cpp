#include "access_guard.h"

#include "input_error.h"
#include "percent_decoding.h"

#include <algorithm>
#include <fstream>
#include <string_view>
#include <utility>

namespace cartonpick::orders {

namespace {

constexpr std::size_t kMinTokenLength = 16;
constexpr std::string_view kBearer = "Bearer ";
constexpr std::string_view kCookie = "cartonpick_token=";
constexpr std::string_view kField = "token=";
constexpr auto kHtml = "text/html; charset=utf-8";

constexpr auto kForm = R"(<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>CartonPick orders: token</title>
<meta name="viewport" content="width=device-width">
<style>
:root { color-scheme: light dark; font: 1.1rem/1.5 system-ui, sans-serif; }
main { max-width: 26rem; margin: 15vh auto; padding: 0 1rem; }
label, input, button { display: block; width: 100%; box-sizing: border-box; font: inherit; }
input, button { margin: .5rem 0 1rem; padding: .7rem; }
</style></head>
<body><main><h1>CartonPick orders</h1>
<form method="post" action="/login">
<label for="token">The token of this service</label>
<input id="token" name="token" type="password" required autofocus autocomplete="current-password">
<button>Show the deliveries</button>
</form></main></body></html>
)";

bool isTokenCharacter(char c) {
  return c > ' ' && c < '\x7f' && std::string_view("\",;\\").find(c) == std::string_view::npos;
}

/// Takes the same time wherever the two differ.
bool areEqual(std::string_view a, std::string_view b) {
  unsigned difference = a.size() == b.size() ? 0 : 1;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    difference |= static_cast<unsigned char>(a[i]) ^ static_cast<unsigned char>(b[i]);
  }
  return difference == 0;
}

/// The value of our cookie among those of a Cookie header.
std::string_view tokenInCookies(std::string_view cookies) {
  while (!cookies.empty()) {
    const auto end = std::min(cookies.find(';'), cookies.size());
    const std::string_view cookie = cookies.substr(0, end);
    if (cookie.starts_with(kCookie)) {
      return cookie.substr(kCookie.size());
    }
    cookies.remove_prefix(std::min(end + 1, cookies.size()));
    cookies.remove_prefix(std::min(cookies.find_first_not_of(' '), cookies.size()));
  }
  return {};
}

Answer form(int status) {
  return {.status = status,
          .contentType = kHtml,
          .body = kForm,
          .headers = {{"WWW-Authenticate", "Bearer"}}};
}

Answer goTo(const std::string &path, const std::string &cookie) {
  return {.status = 303,
          .contentType = kHtml,
          .body = {},
          .headers = {{"Location", path}, {"Set-Cookie", cookie}}};
}

}  // namespace

std::string readToken(const std::filesystem::path &file) {
  return readAt(file.string(), [&] {
    std::ifstream stream(file);
    std::string token;
    std::getline(stream, token);
    if (token.size() < kMinTokenLength ||
        !std::all_of(token.begin(), token.end(), isTokenCharacter)) {
      throw InputError(R"(the first line is no token: 16 or more of the visible ASCII characters )"
                       R"(without ", ,, ; and \)");
    }
    return token;
  });
}

AccessGuard::AccessGuard(std::optional<std::string> token, bool isOpen)
    : m_token(std::move(token)), m_isOpen(isOpen) {}

std::optional<Answer> AccessGuard::refusal(const Request &request) const {
  if (!m_token) {
    return m_isOpen ? std::nullopt
                    : std::optional(textAnswer(
                          403, "start the service with --token-file to have this from elsewhere"));
  }
  if (request.target == kLoginPath && request.method == "POST") {
    return login(request);
  }
  return hasToken(request) ? std::nullopt : std::optional(form(401));
}

bool AccessGuard::hasToken(const Request &request) const {
  const std::string_view authorization = request.authorization;
  return (authorization.starts_with(kBearer) &&
          areEqual(authorization.substr(kBearer.size()), *m_token)) ||
         areEqual(tokenInCookies(request.cookie), *m_token);
}

Answer AccessGuard::login(const Request &request) const {
  const std::string_view body = request.body;
  const auto token =
      body.starts_with(kField) ? percentDecoded(body.substr(kField.size())) : std::nullopt;
  if (!token || !areEqual(*token, *m_token)) {
    return form(401);
  }
  return goTo("/", std::string(kCookie) + *m_token + "; Path=/; HttpOnly; SameSite=Strict");
}

}  // namespace cartonpick::orders
