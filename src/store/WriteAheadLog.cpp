#include "store/WriteAheadLog.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <algorithm>
#include <array>
#include <sqlite3.h>

namespace {

constexpr int kPieceBytes = 1 << 16;

void require(int result, const char *what) {
  if (result != SQLITE_OK) {
    throw SQLite::Exception(what, result);
  }
}

/// The open write-ahead log, or nullptr if there is none. It is owned by `database`.
sqlite3_file *logOf(SQLite::Database &database) {
  sqlite3_file *log = nullptr;
  sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_JOURNAL_POINTER, &log);
  return log != nullptr && log->pMethods != nullptr ? log : nullptr;
}

}  // namespace

void bringLogToDisk(SQLite::Database &database) {
  sqlite3_file *log = logOf(database);
  if (log == nullptr) {
    return;
  }
  sqlite3_int64 size = 0;
  require(log->pMethods->xFileSize(log, &size), "The size of the log cannot be read");
  std::array<char, kPieceBytes> piece{};
  for (sqlite3_int64 offset = 0; offset < size; offset += kPieceBytes) {
    const int bytes = static_cast<int>(std::min<sqlite3_int64>(kPieceBytes, size - offset));
    require(log->pMethods->xRead(log, piece.data(), bytes, offset), "The log cannot be read");
    require(log->pMethods->xWrite(log, piece.data(), bytes, offset), "The log cannot be written");
  }
  if (size > 0) {
    require(log->pMethods->xSync(log, SQLITE_SYNC_NORMAL), "The log cannot be synced to disk");
  }
}
