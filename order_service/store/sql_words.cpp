#include "store/sql_words.h"

#include "model/utc_time.h"

#include <array>
#include <soci/sqlite3/soci-sqlite3.h>
#include <string_view>
#include <utility>

namespace cartonpick::orders {

namespace {

// SOCI has SQLite's declarations there.
using namespace sqlite_api;

void answerNow(sqlite3_context *context, int /*count*/, sqlite3_value ** /*arguments*/) {
  const std::string now = utcTime();
  sqlite3_result_text(context, now.c_str(), static_cast<int>(now.size()), SQLITE_TRANSIENT);
}

void replaceAll(std::string &text, std::string_view from, std::string_view to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

}  // namespace

const SqlWords &sqlWords(SqlDialect dialect) {
  static const SqlWords kSqlite = {.text = "TEXT NOT NULL",
                                   .number = "INTEGER NOT NULL",
                                   .counter = "INTEGER PRIMARY KEY",
                                   .tableOfItsKey = "STRICT, WITHOUT ROWID",
                                   .now = "utc_time()",
                                   .later = "max"};
  static const SqlWords kPostgres = {
      .text = "TEXT COLLATE \"C\" NOT NULL",
      .number = "BIGINT NOT NULL",
      .counter = "BIGSERIAL PRIMARY KEY",
      .tableOfItsKey = "",
      .now = "to_char(clock_timestamp() AT TIME ZONE 'UTC', 'YYYY-MM-DD HH24:MI:SS.US')",
      .later = "greatest"};
  return dialect == SqlDialect::Postgres ? kPostgres : kSqlite;
}

std::string sqlOf(std::string statement, SqlDialect dialect) {
  const SqlWords &words = sqlWords(dialect);
  const std::array<std::pair<std::string_view, std::string_view>, 6> replacements = {{
      {"{text}", words.text},
      {"{number}", words.number},
      {"{counter}", words.counter},
      {"{tableOfItsKey}", words.tableOfItsKey},
      {"{now}", words.now},
      {"{later}", words.later},
  }};
  for (const auto &[name, word] : replacements) {
    replaceAll(statement, name, word);
  }
  return statement;
}

void addClock(soci::session &session) {
  auto *backend = static_cast<soci::sqlite3_session_backend *>(session.get_backend());
  sqlite3_create_function(backend->conn_, "utc_time", 0, SQLITE_UTF8, nullptr, &answerNow, nullptr,
                          nullptr);
}

}  // namespace cartonpick::orders
