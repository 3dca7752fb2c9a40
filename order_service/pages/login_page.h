#pragma once

#include "http/http_message.h"

#include <string>

namespace cartonpick::orders {

/// The page that asks for the token, and then leads to the page `target`; `isWrong` says that the
/// token that was given is not the right one.
Answer loginPage(const std::string &target, bool isWrong);

}  // namespace cartonpick::orders
