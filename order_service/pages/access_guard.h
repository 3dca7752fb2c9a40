#pragma once

#include "http/http_message.h"

#include <filesystem>
#include <optional>
#include <string>

namespace cartonpick::orders {

/// Reads a token from the first line of a file. Throws InputError when there is none of at least 16
/// characters, all of them visible ASCII ones that may stand in a header and a cookie.
std::string readToken(const std::filesystem::path &file);

/// Keeps everything that is not for tablets to those who have the token: programs send it as a
/// bearer token (RFC 6750), a browser is asked for it once and keeps it in a cookie.
class AccessGuard {
 public:
  /// Where the form of the page that asks for the token goes.
  static constexpr auto kLoginPath = "/login";

  /// Without a token, nobody is let in unless `isOpen`, which is for a service that this machine
  /// alone can reach; and then not through a proxy, and only under this machine's own names, not
  /// under one that a web page from elsewhere may have made to lead here.
  AccessGuard(std::optional<std::string> token, bool isOpen);

  /// The answer to a request that may not pass, or that is the login itself; nothing if it may
  /// pass.
  std::optional<Answer> refusal(const Request &request) const;

 private:
  std::optional<Answer> refusalWithoutToken(const Request &request) const;
  bool hasToken(const Request &request) const;
  Answer login(const Request &request) const;

  std::optional<std::string> m_token;
  bool m_isOpen;
};

}  // namespace cartonpick::orders
