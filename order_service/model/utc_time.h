#pragma once

#include <string>

namespace cartonpick::orders {

/// The time now, UTC, yyyy-MM-dd HH:mm:ss.zzzzzz
std::string utcTime();

}  // namespace cartonpick::orders
