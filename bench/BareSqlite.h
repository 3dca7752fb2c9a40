#pragma once

#include <QString>

#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// A minimal RAII wrapper around SQLite's C API: the lower bound that the program's store is
/// compared with. Constructors, `step` and `run` throw std::runtime_error if SQLite fails.
class BareSqlite {
 public:
  /// Opens the program's store at `path`, with the same durability as the program.
  explicit BareSqlite(const QString &path);

  class Statement {
   public:
    Statement(const BareSqlite &database, const char *sql);
    /// `text` must outlive the next `step`.
    void bind(int place, std::string_view text);
    void bind(int place, std::int64_t number);
    /// Returns true if there is another row.
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
