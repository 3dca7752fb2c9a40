#pragma once

#include <string>
#include <utility>

namespace cartonpick::orders {

/// Why the server itself refuses a request.
struct Refusal {
  int status;
  std::string reason;  ///< one word, for the metrics
  std::string text;    ///< for the client
};

/// The refusal of a request that is not HTTP, or that two readers could understand differently.
inline Refusal malformed(
    std::string text = "the request is not HTTP as it should be, or cut short") {
  return {400, "malformed", std::move(text)};
}

}  // namespace cartonpick::orders
