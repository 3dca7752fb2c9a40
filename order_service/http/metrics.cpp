#include "http/metrics.h"

#include <sstream>

namespace cartonpick::orders {

void Metrics::count(const std::string &kind, int status, std::chrono::duration<double> time) {
  const std::lock_guard lock(m_mutex);
  ++m_requests[{kind, status}];
  Histogram &histogram = m_seconds[kind];
  ++histogram.count;
  histogram.sum += time.count();
  for (std::size_t i = 0; i < kBounds.size(); ++i) {
    histogram.within[i] += time.count() <= kBounds[i] ? 1 : 0;
  }
}

std::string Metrics::text() const {
  const std::lock_guard lock(m_mutex);
  std::ostringstream text;
  text << "# HELP cartonpick_requests_total Requests that were answered.\n"
          "# TYPE cartonpick_requests_total counter\n";
  for (const auto &[key, count] : m_requests) {
    text << "cartonpick_requests_total{kind=\"" << key.first << "\",status=\"" << key.second
         << "\"} " << count << '\n';
  }
  text << "# HELP cartonpick_request_seconds From the request's end to the answer's beginning.\n"
          "# TYPE cartonpick_request_seconds histogram\n";
  for (const auto &[kind, histogram] : m_seconds) {
    const std::string bucket = "cartonpick_request_seconds_bucket{kind=\"" + kind + "\",le=\"";
    for (std::size_t i = 0; i < kBounds.size(); ++i) {
      text << bucket << kBounds[i] << "\"} " << histogram.within[i] << '\n';
    }
    text << bucket << "+Inf\"} " << histogram.count << '\n'
         << "cartonpick_request_seconds_sum{kind=\"" << kind << "\"} " << histogram.sum << '\n'
         << "cartonpick_request_seconds_count{kind=\"" << kind << "\"} " << histogram.count << '\n';
  }
  return text.str();
}

}  // namespace cartonpick::orders
