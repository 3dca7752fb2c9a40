#pragma once

#include <cstdint>
#include <string>

namespace cartonpick::orders {

/// Sends the bytes to a loopback port and returns all that comes back until the other side ends.
std::string exchangeRaw(std::uint16_t port, const std::string &bytes);

}  // namespace cartonpick::orders
