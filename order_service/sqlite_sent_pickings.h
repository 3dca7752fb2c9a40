#pragma once

#include "sent_pickings.h"

#include <SQLiteCpp/Database.h>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace cartonpick::orders {

/// The sent pickings in an SQLite file. Several processes may share one file.
class SqliteSentPickings : public SentPickings {
 public:
  /// The file name that keeps everything in memory only.
  static constexpr auto kInMemory = ":memory:";

  /// Opens the file, creating it when missing. Throws std::runtime_error that names the file.
  explicit SqliteSentPickings(const std::string &file);

  bool isSent(std::string_view delivery) const override;
  void store(const std::vector<PickedLine> &lines) override;

 private:
  mutable std::mutex m_mutex;
  SQLite::Database m_database;
};

}  // namespace cartonpick::orders
