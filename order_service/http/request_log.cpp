#include "http/request_log.h"

#include "model/utc_time.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace cartonpick::orders {

namespace {

constexpr int kFirstErrorStatus = 400;

double milliseconds(std::chrono::duration<double> time) {
  return std::round(time.count() * 1e6) / 1e3;
}

}  // namespace

void RequestLog::write(const Request &request, const Answer &answer,
                       std::chrono::duration<double> time) {
  nlohmann::ordered_json line = {{"time", utcTime()},           {"id", request.id},
                                 {"client", request.client},    {"method", request.method},
                                 {"target", request.target},    {"status", answer.status},
                                 {"bytes", answer.body.size()}, {"ms", milliseconds(time)}};
  if (answer.status >= kFirstErrorStatus && answer.contentType.starts_with("text/plain")) {
    line["error"] = answer.body;
  }
  // What came over the wire need not be UTF-8.
  const std::string text =
      line.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  const std::lock_guard lock(m_mutex);
  m_out << text << std::endl;
}

}  // namespace cartonpick::orders
