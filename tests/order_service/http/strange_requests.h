#pragma once

#include <string>
#include <vector>

namespace cartonpick::orders {

/// A request that readers of HTTP may understand differently.
struct StrangeRequest {
  std::string name;  ///< what is strange about it
  std::string bytes;
  int status;  ///< of the answer; 200 if the request is to be taken
};

/// Reports of one picking, POST requests to `target` with the JSON body, each strange in its own
/// way. Those that are taken ask for the connection's end.
std::vector<StrangeRequest> strangeRequests(const std::string &target, const std::string &body);

}  // namespace cartonpick::orders
