// Opens and uses a store file created by arbitrary SQL: with unexpected tables, views, triggers and
// functions, and with a schema changed through writable_schema.

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

/// Returns true if `pragma` affects only the contents of the file.
bool isHarmless(std::string_view pragma) {
  constexpr std::array<std::string_view, 6> kPragmas = {
      "writable_schema", "encoding", "user_version", "page_size", "auto_vacuum", "table_info"};
  return std::any_of(kPragmas.begin(), kPragmas.end(), [&](std::string_view name) {
    return sqlite3_strnicmp(pragma.data(), name.data(), static_cast<int>(name.size() + 1)) == 0;
  });
}

/// Denies statements of the generated SQL that reach outside the file.
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

/// Creates a file with the statements of `sql`, within limits on time and size.
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
  // Runs each statement separately; failures are ignored.
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
