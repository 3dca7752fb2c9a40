#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace cartonpick::orders {

/// A login that a browser keeps in a cookie. It is signed with a token, without telling it, so that
/// every instance that has the token takes it, and none after the token is withdrawn.
class LoginSession {
 public:
  using Clock = std::chrono::system_clock;

  /// How long a login is valid.
  static constexpr auto kDuration = std::chrono::hours(12);

  /// The text of a new session.
  static std::string begin(const std::string &token, Clock::time_point now = Clock::now());

  /// Returns true if the text is that of a session that the token began and that has not expired.
  static bool isValid(std::string_view text, const std::string &token,
                      Clock::time_point now = Clock::now());
};

/// Compares in a time that does not tell where the two differ.
bool areEqual(std::string_view a, std::string_view b);

}  // namespace cartonpick::orders
