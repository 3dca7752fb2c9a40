#pragma once

#include "model/pool_use.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace cartonpick::orders {

enum class PoolKind {
  Threads,      ///< that answer requests
  Connections,  ///< to the store
};

/// Counts what the service does, for Prometheus. May be used from several threads at once.
class Metrics {
 public:
  using Seconds = Histogram::Seconds;

  /// One request of a kind ("lookup", "send", …) was answered with a status after some time.
  void count(const std::string &kind, int status, Seconds time);

  /// One request, or one connection, was refused for a reason of one word.
  void countRefusal(const std::string &reason);

  /// Has the text tell the use of a pool, which `use` returns, until removePool().
  void addPool(PoolKind kind, const std::string &name, std::function<PoolUse()> use);
  void removePool(PoolKind kind, const std::string &name);

  void setConnections(std::size_t connections) { m_connections = connections; }

  /// Everything so far in the Prometheus text format 0.0.4.
  std::string text() const;

 private:
  using Pools = std::map<std::string, std::function<PoolUse()>>;

  mutable std::mutex m_mutex;
  std::map<std::pair<std::string, int>, std::uint64_t> m_requests;
  std::map<std::string, Histogram> m_seconds;
  std::map<std::string, std::uint64_t> m_refusals;
  std::map<PoolKind, Pools> m_pools;
  std::atomic<std::size_t> m_connections = 0;
};

}  // namespace cartonpick::orders
