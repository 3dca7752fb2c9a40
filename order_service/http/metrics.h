#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace cartonpick::orders {

/// How a pool of threads is used now.
struct PoolUse {
  std::size_t threads = 0;
  std::size_t busy = 0;     ///< threads that answer a request
  std::size_t waiting = 0;  ///< requests that wait for a thread
};

/// Counts what the service does, for Prometheus. May be used from several threads at once.
class Metrics {
 public:
  using Seconds = std::chrono::duration<double>;

  /// One request of a kind ("lookup", "send", …) was answered with a status after some time.
  void count(const std::string &kind, int status, Seconds time);

  /// One request, or one connection, was refused for a reason of one word.
  void countRefusal(const std::string &reason);

  /// One request waited for a thread of a pool.
  void countWait(const std::string &pool, Seconds time);

  /// Has the text tell the use of a pool, which `use` returns, until removePool().
  void addPool(const std::string &pool, std::function<PoolUse()> use);
  void removePool(const std::string &pool);

  void setConnections(std::size_t connections) { m_connections = connections; }

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
  using Histograms = std::map<std::string, Histogram>;

  static void add(Histogram &histogram, Seconds time);
  static void write(std::ostream &out, const std::string &name, const std::string &label,
                    const Histograms &histograms);
  void writePools(std::ostream &out) const;

  mutable std::mutex m_mutex;
  std::map<std::pair<std::string, int>, std::uint64_t> m_requests;
  Histograms m_seconds;
  std::map<std::string, std::uint64_t> m_refusals;
  Histograms m_waits;
  std::map<std::string, std::function<PoolUse()>> m_pools;
  std::atomic<std::size_t> m_connections = 0;
};

}  // namespace cartonpick::orders
