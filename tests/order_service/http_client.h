#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cartonpick::orders {

/// What a server answered.
struct Reply {
  int status = 0;
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;

  /// The value of the first header field of that name; empty without one.
  std::string header(const std::string &name) const;
};

using Headers = std::vector<std::pair<std::string, std::string>>;

/// Sends requests to a loopback port, each over its own connection.
class HttpClient {
 public:
  explicit HttpClient(std::uint16_t port) : m_port(port) {}

  /// Returns the answer; status 0 without a complete one.
  Reply request(const std::string &method, const std::string &target, const std::string &body = {},
                const Headers &headers = {}) const;

  Reply get(const std::string &target, const Headers &headers = {}) const;
  Reply post(const std::string &target, const std::string &body,
             const std::string &contentType) const;

 private:
  std::uint16_t m_port;
};

/// Reads the answers in the bytes of one connection. A body that is cut short is left out.
std::vector<Reply> repliesIn(const std::string &bytes);

}  // namespace cartonpick::orders
