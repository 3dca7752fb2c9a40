#pragma once

#include <QString>

#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// The C API of SQLite with nothing around it but the release of its handles: the floor that the
/// program's store is measured against. What fails throws std::runtime_error.
class BareSqlite {
 public:
  /// Opens the program's store at `path`, with the program's durability.
  explicit BareSqlite(const QString &path);

  class Statement {
   public:
    Statement(const BareSqlite &database, const char *sql);
    /// `text` must outlive the next `step`.
    void bind(int place, std::string_view text);
    void bind(int place, std::int64_t number);
    /// Whether there is a row.
    bool step();
    void reset();
    [[nodiscard]] std::string_view text(int column) const;
    [[nodiscard]] std::int64_t number(int column) const;

   private:
    struct Finalize {
      void operator()(sqlite3_stmt *statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
  };

  void run(const char *sql) const;

 private:
  struct Close {
    void operator()(sqlite3 *database) const;
  };
  std::unique_ptr<sqlite3, Close> m_database;
};
