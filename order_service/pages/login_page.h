#pragma once

#include "http/http_message.h"

#include <string>

namespace cartonpick::orders {

enum class LoginState {
  Asked,    ///< for the token
  Wrong,    ///< the token that was sent is not the right one
  Refused,  ///< too many were wrong
};

/// The page that asks for the token, and then leads to the page `target`.
Answer loginPage(const std::string &target, LoginState state);

}  // namespace cartonpick::orders
