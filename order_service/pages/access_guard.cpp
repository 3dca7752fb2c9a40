#include "pages/access_guard.h"

#include "model/input_error.h"
#include "pages/html.h"
#include "pages/login_page.h"
#include "pages/login_session.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <fstream>
#include <string_view>
#include <utility>

namespace cartonpick::orders {

namespace {

constexpr std::size_t kMinTokenLength = 16;
constexpr std::string_view kBearer = "bearer ";
constexpr std::string_view kCookie = "cartonpick_session=";
constexpr auto kLogoutPath = "/logout";
constexpr int kTooManyRequests = 429;

bool isTokenCharacter(char c) {
  return c > ' ' && c < '\x7f' && std::string_view("\",;\\").find(c) == std::string_view::npos;
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

/// Returns true if the name always resolves to the browser's own machine.
bool isLoopbackName(std::string_view name) {
  constexpr std::string_view kDigitsAndDots = "0123456789.";
  return name == "localhost" || name == "[::1]" ||
         (name.starts_with("127.") &&
          name.find_first_not_of(kDigitsAndDots) == std::string_view::npos);
}

/// The value of our cookie among those of a Cookie header.
std::string_view sessionInCookies(std::string_view cookies) {
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
  return isPath && isVisible && page != AccessGuard::kLoginPath && page != kLogoutPath ? page : "/";
}

Answer goTo(const std::string &path, const std::string &cookie) {
  return {.status = 303,
          .contentType = "text/html; charset=utf-8",
          .body = {},
          .headers = {{"Location", path}, {"Set-Cookie", cookie}}};
}

void checkToken(const std::string &token, const std::string &line) {
  if (token.size() < kMinTokenLength ||
      !std::all_of(token.begin(), token.end(), isTokenCharacter)) {
    throw InputError("the " + line +
                     " line is no token: it takes 16 or more letters, digits and signs, "
                     "but no blank, quotation mark, comma, semicolon or backslash");
  }
}

/// The end of the cookie is that of the session.
Answer withCookie(const std::string &path, const std::string &session, std::chrono::seconds age,
                  const Request &request) {
  // A browser that reaches a proxy by TLS says so where it sends the form from.
  const bool isSecure = request.origin.starts_with("https://");
  return goTo(path, std::string(kCookie) + session +
                        "; Path=/; Max-Age=" + std::to_string(age.count()) +
                        "; HttpOnly; SameSite=Strict" + (isSecure ? "; Secure" : ""));
}

}  // namespace

AccessTokens readTokens(const std::filesystem::path &file) {
  return readAt(file.string(), [&] {
    std::ifstream stream(file);
    AccessTokens tokens;
    if (!std::getline(stream, tokens.current)) {
      throw InputError("the file can't be read, or is empty");
    }
    checkToken(tokens.current, "first");
    std::string former;
    if (std::getline(stream, former) && !former.empty()) {
      checkToken(former, "second");
      tokens.former = former;
    }
    return tokens;
  });
}

AccessGuard::AccessGuard(std::optional<std::string> token, bool isOpen)
    : m_isOpen(isOpen), m_guesses(std::make_unique<GuessLimit>()) {
  if (token) {
    m_tokens.push_back(std::move(*token));
  }
}

AccessGuard::AccessGuard(const AccessTokens &tokens) : AccessGuard(tokens.current, false) {
  if (tokens.former) {
    m_tokens.push_back(*tokens.former);
  }
}

std::optional<Answer> AccessGuard::refusal(const Request &request) const {
  if (m_tokens.empty()) {
    return refusalWithoutToken(request);
  }
  if (request.target == kLoginPath && request.method == "POST") {
    return login(request);
  }
  if (request.target == kLogoutPath && request.method == "POST") {
    return withCookie("/", "", std::chrono::seconds(0), request);
  }
  if (hasSession(request)) {
    return std::nullopt;
  }
  const std::string page = ownPage(request.target);
  if (request.authorization.empty()) {
    return loginPage(page, LoginState::Asked);
  }
  return checkGuess(request, bearerToken(request.authorization), page);
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

bool AccessGuard::hasSession(const Request &request) const {
  const std::string_view session = sessionInCookies(request.cookie);
  return std::any_of(m_tokens.begin(), m_tokens.end(), [&](const std::string &token) {
    return LoginSession::isValid(session, token);
  });
}

std::optional<Answer> AccessGuard::checkGuess(const Request &request, std::string_view guess,
                                              const std::string &page) const {
  // Also the right token is refused then: else the limit would not slow down who guesses.
  if (m_guesses->isReached(request.client)) {
    Answer answer = loginPage(page, LoginState::Refused);
    answer.status = kTooManyRequests;
    answer.headers = {
        {"Retry-After", std::to_string(std::chrono::seconds(GuessLimit::kPeriod).count())}};
    return answer;
  }
  if (std::any_of(m_tokens.begin(), m_tokens.end(),
                  [&](const std::string &token) { return areEqual(guess, token); })) {
    return std::nullopt;
  }
  m_guesses->noteWrongGuess(request.client);
  return loginPage(page, LoginState::Wrong);
}

Answer AccessGuard::login(const Request &request) const {
  const std::string form = '?' + request.body;
  const std::string page = ownPage(queryParameter(form, "page"));
  if (auto refused = checkGuess(request, queryParameter(form, "token"), page)) {
    return *refused;
  }
  return withCookie(page, LoginSession::begin(m_tokens.front()), LoginSession::kDuration, request);
}

}  // namespace cartonpick::orders
