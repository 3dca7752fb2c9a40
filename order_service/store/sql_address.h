#pragma once

#include <string>

namespace cartonpick::orders {

/// Which database a store is in. Both know the same statements; only the schema differs in words.
enum class SqlDialect { Sqlite, Postgres };

/// Where a store is: a URL of PostgreSQL ("postgresql://…") or an SQLite file.
struct SqlAddress {
  /// The file name that keeps everything in memory only, as long as there is one connection.
  static constexpr auto kInMemory = ":memory:";

  explicit SqlAddress(std::string where);

  std::string text;
  SqlDialect dialect;

  /// The text without user and password.
  std::string shown() const;
};

}  // namespace cartonpick::orders
