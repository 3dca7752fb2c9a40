#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace cartonpick::orders {

/// Counts what the service does, for Prometheus. May be used from several threads at once.
class Metrics {
 public:
  /// One request of a kind ("lookup", "send", …) was answered with a status after some time.
  void count(const std::string &kind, int status, std::chrono::duration<double> time);

  /// Everything so far in the Prometheus text format 0.0.4.
  std::string text() const;

 private:
  /// The upper bounds of a histogram, in seconds.
  static constexpr std::array kBounds = {0.001, 0.005, 0.025, 0.1, 0.5, 2.5, 10.0};

  struct Histogram {
    std::array<std::uint64_t, kBounds.size()> within{};
    std::uint64_t count = 0;
    double sum = 0;
  };

  mutable std::mutex m_mutex;
  std::map<std::pair<std::string, int>, std::uint64_t> m_requests;
  std::map<std::string, Histogram> m_seconds;
};

}  // namespace cartonpick::orders
