#include "BareSqlite.h"

#include <cstdint>
#include <sqlite3.h>
#include <stdexcept>

namespace {

void check(int code, sqlite3 *database) {
  if (code != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(database));
  }
}

}  // namespace

BareSqlite::BareSqlite(const QString &path) {
  sqlite3 *database = nullptr;
  const int code = sqlite3_open(path.toUtf8().constData(), &database);
  m_database.reset(database);
  check(code, database);
  run("PRAGMA synchronous = FULL");
}

void BareSqlite::run(const char *sql) const {
  check(sqlite3_exec(m_database.get(), sql, nullptr, nullptr, nullptr), m_database.get());
}

void BareSqlite::Close::operator()(sqlite3 *database) const {
  sqlite3_close(database);
}

BareSqlite::Statement::Statement(const BareSqlite &database, const char *sql) {
  sqlite3_stmt *statement = nullptr;
  check(sqlite3_prepare_v3(database.m_database.get(), sql, -1, SQLITE_PREPARE_PERSISTENT,
                           &statement, nullptr),
        database.m_database.get());
  m_statement.reset(statement);
}

void BareSqlite::Statement::bind(int place, std::string_view text) {
  sqlite3_bind_text(m_statement.get(), place, text.data(), static_cast<int>(text.size()),
                    SQLITE_STATIC);
}

void BareSqlite::Statement::bind(int place, std::int64_t number) {
  sqlite3_bind_int64(m_statement.get(), place, number);
}

bool BareSqlite::Statement::step() {
  const int code = sqlite3_step(m_statement.get());
  if (code != SQLITE_ROW && code != SQLITE_DONE) {
    throw std::runtime_error(sqlite3_errstr(code));
  }
  return code == SQLITE_ROW;
}

void BareSqlite::Statement::reset() {
  sqlite3_reset(m_statement.get());
}

std::string_view BareSqlite::Statement::text(int column) const {
  const unsigned char *text = sqlite3_column_text(m_statement.get(), column);
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(m_statement.get(), column));
  return {reinterpret_cast<const char *>(text), size};
}

std::int64_t BareSqlite::Statement::number(int column) const {
  return sqlite3_column_int64(m_statement.get(), column);
}

void BareSqlite::Statement::Finalize::operator()(sqlite3_stmt *statement) const {
  sqlite3_finalize(statement);
}
