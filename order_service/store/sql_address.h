#pragma once

#include <map>
#include <string>
#include <vector>

namespace cartonpick::orders {

/// The database of a store. Both take the same statements; only the schema differs in words.
enum class SqlDialect { Sqlite, Postgres };

/// Where a store is: a URL of PostgreSQL ("postgresql://…") or an SQLite file.
class SqlAddress {
 public:
  /// The file name that keeps everything in memory only, as long as there is one connection.
  static constexpr auto kInMemory = ":memory:";

  /// Throws InputError, which quotes nothing of `where`, if that is neither; also if a user or a
  /// password in a URL was not percent-encoded, so that a part of it would pass for a host.
  explicit SqlAddress(const std::string &where);

  SqlDialect dialect() const { return m_dialect; }

  /// The SQLite file; empty for PostgreSQL.
  const std::string &file() const { return m_file; }

  /// libpq's connection parameters by keyword, as the URL has them; none for SQLite.
  const std::map<std::string, std::string> &parameters() const { return m_parameters; }

  /// The file, or a URL of hosts, ports and database alone.
  std::string shown() const;

  /// The message with "***" in place of every secret of the URL.
  std::string withoutSecrets(std::string message) const;

 private:
  void parse(const std::string &url);
  std::string value(const std::string &keyword) const;

  SqlDialect m_dialect;
  std::string m_file;
  std::map<std::string, std::string> m_parameters;
  std::vector<std::string> m_secrets;
};

}  // namespace cartonpick::orders
