#pragma once

#include "service_process.h"

#include <filesystem>
#include <memory>
#include <string>

namespace cartonpick::orders {

/// A private PostgreSQL in a temporary folder, reached through a socket there; removed in the end.
/// Throws std::runtime_error when it does not start.
class PostgresCluster {
 public:
  PostgresCluster();
  struct StandbyOf {
    const PostgresCluster &primary;
  };
  explicit PostgresCluster(StandbyOf standby);
  PostgresCluster(const PostgresCluster &) = delete;
  PostgresCluster &operator=(const PostgresCluster &) = delete;
  ~PostgresCluster();

  /// postgresql://…
  std::string url() const;
  /// The folder of the socket, which a URL takes as a host.
  std::string host() const { return m_folder; }

  /// Runs a statement, outside of a transaction. Throws std::runtime_error if it fails.
  void execute(const std::string &sql) const;

  void start();
  /// Ends it as a crash would: without warning, its connections cut.
  void crash();

 private:
  std::filesystem::path m_folder;
  std::unique_ptr<ServiceProcess> m_server;
};

}  // namespace cartonpick::orders
