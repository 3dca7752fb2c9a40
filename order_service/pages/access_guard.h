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

/// The token that opens the pages; while it is exchanged, the former one does, too.
struct AccessTokens {
  std::string current;
  std::optional<std::string> former = std::nullopt;
};

/// Reads the token from the first line of a file, and the former one, if there is any, from the
/// second. Throws InputError unless each has at least 16 characters, all of them visible ASCII ones
/// that may be in a header and a cookie.
AccessTokens readTokens(const std::filesystem::path &file);

/// Keeps everything that is not for tablets to those who have the token: programs send it as a
/// bearer token (RFC 6750), a browser is asked for it and keeps a session in a cookie. An address
/// that has sent too many wrong ones is refused for some minutes.
class AccessGuard {
 public:
  /// Where the form of the page that asks for the token goes.
  static constexpr auto kLoginPath = "/login";

  /// Without a token, nobody is let in unless `isOpen`, which is for a service that this machine
  /// alone can reach; and then not through a proxy, and only under this machine's own names, not
  /// under one that a web page from elsewhere may have made to lead here.
  AccessGuard(std::optional<std::string> token, bool isOpen);

  /// Lets in those who have one of the tokens.
  explicit AccessGuard(const AccessTokens &tokens);

  /// The answer to a request that may not pass, or that is the login or log-out itself; nothing if
  /// it may pass.
  std::optional<Answer> refusal(const Request &request) const;

  /// Returns true if it takes a token to be let in.
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
