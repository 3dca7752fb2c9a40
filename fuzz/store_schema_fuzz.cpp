// The store's file, made by any SQL: with tables, views, triggers and functions where the program
// expects none, and with a schema that no SQL could make.

#include "Property.h"
#include "StoreExercise.h"
#include "StoreFile.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <sqlite3.h>
#include <string>
#include <string_view>

namespace {

/// Whether a pragma shapes the file and reaches nothing outside it.
bool isHarmless(std::string_view pragma) {
  constexpr std::array<std::string_view, 6> kPragmas = {
      "writable_schema", "encoding", "user_version", "page_size", "auto_vacuum", "table_info"};
  return std::any_of(kPragmas.begin(), kPragmas.end(), [&](std::string_view name) {
    return sqlite3_strnicmp(pragma.data(), name.data(), static_cast<int>(name.size() + 1)) == 0;
  });
}

/// Keeps what makes the file, which is no part of the program, inside the file.
int authorize(void * /*unused*/, int action, const char *first, const char * /*second*/,
              const char * /*database*/, const char * /*trigger*/) {
  if (action == SQLITE_ATTACH || action == SQLITE_DETACH ||
      (action == SQLITE_PRAGMA && !isHarmless(first))) {
    return SQLITE_DENY;
  }
  return SQLITE_OK;
}

int giveUp(void * /*unused*/) {
  return 1;
}

/// Runs `sql` as far as it goes, on a new file.
void makeFile(const QString &path, const std::string &sql) {
  constexpr int kMaxSteps = 20'000;
  constexpr int kMaxBytes = 100'000;
  sqlite3 *database = nullptr;
  sqlite3_open(path.toUtf8().constData(), &database);
  sqlite3_limit(database, SQLITE_LIMIT_LENGTH, kMaxBytes);
  sqlite3_limit(database, SQLITE_LIMIT_EXPR_DEPTH, 100);
  sqlite3_limit(database, SQLITE_LIMIT_LIKE_PATTERN_LENGTH, 100);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
  sqlite3_set_authorizer(database, authorize, nullptr);
  sqlite3_progress_handler(database, kMaxSteps, giveUp, nullptr);
  sqlite3_exec(database, "PRAGMA page_size = 512; PRAGMA writable_schema = ON", nullptr, nullptr,
               nullptr);
  // Each statement for itself: one that fails does not keep the next from running.
  const char *rest = sql.c_str();
  while (*rest != '\0') {
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(database, rest, -1, &statement, &rest) != SQLITE_OK) {
      const char *const end = std::strchr(rest, ';');
      rest = end == nullptr ? "" : end + 1;
      continue;
    }
    while (sqlite3_step(statement) == SQLITE_ROW) {
    }
    sqlite3_finalize(statement);
  }
  sqlite3_close(database);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static const StoreFile kFile;
  kFile.removeAll();
  makeFile(kFile.path(), std::string(reinterpret_cast<const char *>(data), size));
  exerciseStore(kFile.path());
  return 0;
}
