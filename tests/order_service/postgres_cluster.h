#pragma once

#include "service_process.h"

#include <filesystem>
#include <memory>
#include <string>

namespace cartonpick::orders {

/// A PostgreSQL of its own in a temporary folder, reached through a socket there. It is gone in the
/// end. Throws std::runtime_error when it does not start.
class PostgresCluster {
 public:
  PostgresCluster();
  PostgresCluster(const PostgresCluster &) = delete;
  PostgresCluster &operator=(const PostgresCluster &) = delete;
  ~PostgresCluster();

  /// postgresql://…
  std::string url() const;

  void start();
  /// Ends it as a crash would: without warning, its connections cut.
  void crash();

 private:
  std::filesystem::path m_folder;
  std::unique_ptr<ServiceProcess> m_server;
};

}  // namespace cartonpick::orders
