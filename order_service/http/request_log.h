#pragma once

#include "http/http_message.h"

#include <chrono>
#include <mutex>
#include <ostream>

namespace cartonpick::orders {

/// Writes a line for each request, a JSON object: "time" (UTC), "id", "client" with its IP address,
/// "method", "target", "status", "bytes" of the answer's body, "ms", and "error" with the text of
/// an answer from status 400 on. Tokens and bodies of requests are never written. May be used from
/// several threads at once.
class RequestLog {
 public:
  /// The stream must outlive the log.
  explicit RequestLog(std::ostream &out) : m_out(out) {}

  void write(const Request &request, const Answer &answer, std::chrono::duration<double> time);

 private:
  std::mutex m_mutex;
  std::ostream &m_out;
};

}  // namespace cartonpick::orders
