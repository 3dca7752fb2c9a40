#include "pages/access_guard.h"

#include "model/input_error.h"
#include "pages/html.h"
#include "pages/login_page.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <string_view>
#include <utility>

namespace cartonpick::orders {

namespace {

constexpr std::size_t kMinTokenLength = 16;
constexpr std::string_view kBearer = "bearer ";
constexpr std::string_view kCookie = "cartonpick_token=";
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

/// The token of an Authorization header; empty for another scheme. The scheme's case does not
/// matter.
std::string_view bearerToken(std::string_view authorization) {
  const std::string_view scheme = authorization.substr(0, kBearer.size());
  const bool isBearer =
      std::equal(scheme.begin(), scheme.end(), kBearer.begin(), kBearer.end(),
                 [](unsigned char a, unsigned char b) { return std::tolower(a) == b; });
  return isBearer ? authorization.substr(kBearer.size()) : std::string_view();
}

std::string_view withoutPort(std::string_view host) {
  const auto colon = host.find_last_not_of("0123456789");
  return colon != std::string_view::npos && host[colon] == ':' ? host.substr(0, colon) : host;
}

/// Whether a browser finds nothing but its own machine under that name.
bool isLoopbackName(std::string_view name) {
  constexpr std::string_view kDigitsAndDots = "0123456789.";
  return name == "localhost" || name == "[::1]" ||
         (name.starts_with("127.") &&
          name.find_first_not_of(kDigitsAndDots) == std::string_view::npos);
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

/// The page that was asked for; the first one, if a browser would find it elsewhere, or if it is
/// the login itself.
std::string ownPage(const std::string &page) {
  const bool isPath = page.starts_with('/') && page.find_first_of("/\\", 1) != 1;
  const bool isVisible =
      std::all_of(page.begin(), page.end(), [](char c) { return c > ' ' && c < '\x7f'; });
  return isPath && isVisible && page != AccessGuard::kLoginPath ? page : "/";
}

Answer goTo(const std::string &path, const std::string &cookie) {
  return {.status = 303,
          .contentType = "text/html; charset=utf-8",
          .body = {},
          .headers = {{"Location", path}, {"Set-Cookie", cookie}}};
}

}  // namespace

std::string readToken(const std::filesystem::path &file) {
  return readAt(file.string(), [&] {
    std::ifstream stream(file);
    std::string token;
    if (!std::getline(stream, token)) {
      throw InputError("the file can't be read, or is empty");
    }
    if (token.size() < kMinTokenLength ||
        !std::all_of(token.begin(), token.end(), isTokenCharacter)) {
      throw InputError(
          "the first line is no token: it takes 16 or more letters, digits and signs, "
          "but no blank, quotation mark, comma, semicolon or backslash");
    }
    return token;
  });
}

AccessGuard::AccessGuard(std::optional<std::string> token, bool isOpen)
    : m_token(std::move(token)), m_isOpen(isOpen) {}

std::optional<Answer> AccessGuard::refusal(const Request &request) const {
  if (!m_token) {
    return refusalWithoutToken(request);
  }
  if (request.target == kLoginPath && request.method == "POST") {
    return login(request);
  }
  return hasToken(request) ? std::nullopt
                           : std::optional(loginPage(ownPage(request.target), false));
}

std::optional<Answer> AccessGuard::refusalWithoutToken(const Request &request) const {
  if (!m_isOpen) {
    return textAnswer(403, "start the service with --token-file to have this from elsewhere");
  }
  // Whoever reaches the proxy would be let in, too.
  if (request.isForwarded) {
    return textAnswer(403, "without --token-file this is not there through a proxy");
  }
  // A web page from elsewhere whose name was made to lead here would be let in, too.
  if (!request.host.empty() && !isLoopbackName(withoutPort(request.host))) {
    return textAnswer(403, "without --token-file this is at localhost and 127.0.0.1 only");
  }
  return std::nullopt;
}

bool AccessGuard::hasToken(const Request &request) const {
  return areEqual(bearerToken(request.authorization), *m_token) ||
         areEqual(tokenInCookies(request.cookie), *m_token);
}

Answer AccessGuard::login(const Request &request) const {
  const std::string form = '?' + request.body;
  const std::string page = ownPage(queryParameter(form, "page"));
  if (!areEqual(queryParameter(form, "token"), *m_token)) {
    return loginPage(page, true);
  }
  return goTo(page, std::string(kCookie) + *m_token + "; Path=/; HttpOnly; SameSite=Strict");
}

}  // namespace cartonpick::orders
