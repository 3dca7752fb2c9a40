#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cartonpick::orders {

/// A request as it was received.
struct Request {
  std::string method;
  std::string target;  ///< path and query, still percent-encoded
  std::string contentType;
  std::string body;
  std::string authorization = {};  ///< the header's value; empty without one
  std::string cookie = {};         ///< the same
  std::string host = {};           ///< the same, or that of a target in absolute form
  std::string origin = {};         ///< the same; web pages have one when they send
  std::string ifNoneMatch = {};    ///< the same
  std::string id = {};             ///< for the log and the answer
  std::string client = {};         ///< IP address of the client, or what a trusted proxy says it is
  bool isForwarded = false;        ///< true if anything about the request shows a proxy
};

struct Answer {
  int status = 200;
  std::string contentType;
  std::string body;
  /// The allowed methods, with status 405 only.
  std::optional<std::string> allow = std::nullopt;
  /// Names and values.
  std::vector<std::pair<std::string, std::string>> headers = {};
};

/// A plain text answer.
inline Answer textAnswer(int status, std::string text) {
  return {.status = status, .contentType = "text/plain; charset=utf-8", .body = std::move(text)};
}

/// Answers a request. May be called from several threads at once. If it throws a std::exception,
/// the answer has status 500 and the exception's text.
using Handler = std::function<Answer(const Request &)>;

}  // namespace cartonpick::orders
