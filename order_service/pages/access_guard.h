#pragma once

#include "http/http_message.h"
#include "pages/guess_limit.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cartonpick::orders {

/// The valid tokens. While the token is replaced, the former one is valid as well.
struct AccessTokens {
  std::string current;
  std::optional<std::string> former = std::nullopt;
};

/// Reads the token from the first line of a file, and the former one, if there is any, from the
/// second. Throws InputError unless each consists of at least 16 visible ASCII characters that may
/// be in a header and a cookie.
AccessTokens readTokens(const std::filesystem::path &file);

/// Refuses requests without the token to everything that is not for tablets. Programs send it as a
/// bearer token (RFC 6750); a browser asks for it and keeps a session in a cookie. An address that
/// has sent too many wrong tokens is refused for some minutes.
class AccessGuard {
 public:
  /// The path that the login form is sent to.
  static constexpr auto kLoginPath = "/login";

  /// Without a token every request is refused unless `isOpen`, which is for a service that listens
  /// on loopback. Even then a request through a proxy is refused, and one with another Host than
  /// the names of this machine, which a web page may have caused to resolve to it.
  AccessGuard(std::optional<std::string> token, bool isOpen);

  /// Accepts requests with one of the tokens.
  explicit AccessGuard(const AccessTokens &tokens);

  /// Returns the answer to a request that is refused, or that is the login or log-out; nothing for
  /// any other request.
  std::optional<Answer> refusal(const Request &request) const;

  /// Returns true if there is a token.
  bool takesToken() const { return !m_tokens.empty(); }

 private:
  std::optional<Answer> refusalWithoutToken(const Request &request) const;
  bool hasSession(const Request &request) const;
  std::optional<Answer> checkGuess(const Request &request, std::string_view guess,
                                   const std::string &page) const;
  Answer login(const Request &request) const;

  std::vector<std::string> m_tokens;  ///< the current one first
  bool m_isOpen;
  std::unique_ptr<GuessLimit> m_guesses;
};

}  // namespace cartonpick::orders
