#include "store/sql_failure.h"

#include <algorithm>
#include <array>
#include <soci/postgresql/soci-postgresql.h>
#include <soci/sqlite3/soci-sqlite3.h>
#include <string>
#include <string_view>

namespace cartonpick::orders {

namespace {

constexpr std::string_view kReadOnlyTransaction = "25006";

/// The beginnings of SQLSTATE: lost connections, the end of a transaction that waited too long, a
/// deadlock or a conflict, too little of a resource, an operator's intervention (a cancelled
/// statement and a shutdown are such), a lock that was not free in time, and trouble of the system.
constexpr std::array<std::string_view, 7> kTemporary = {"08", "25P03", "40", "53",
                                                        "57", "55P03", "58"};

SqlFailure failureOfState(const std::string &state) {
  if (state == kReadOnlyTransaction) {
    return SqlFailure::ReadOnly;
  }
  const bool isTemporary = std::any_of(kTemporary.begin(), kTemporary.end(),
                                       [&](auto begin) { return state.starts_with(begin); });
  return isTemporary ? SqlFailure::Unavailable : SqlFailure::Permanent;
}

SqlFailure failureOfResult(int result) {
  constexpr int kPrimary = 0xff;
  switch (result & kPrimary) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_NOMEM:
    case SQLITE_READONLY:
    case SQLITE_INTERRUPT:
    case SQLITE_IOERR:
    case SQLITE_FULL:
    case SQLITE_CANTOPEN:
    case SQLITE_PROTOCOL:
      return SqlFailure::Unavailable;
    default:
      return SqlFailure::Permanent;
  }
}

}  // namespace

SqlFailure sqlFailureOf(const soci::soci_error &error) {
  if (const auto *postgres = dynamic_cast<const soci::postgresql_soci_error *>(&error)) {
    return failureOfState(postgres->sqlstate());
  }
  if (const auto *sqlite = dynamic_cast<const soci::sqlite3_soci_error *>(&error)) {
    return failureOfResult(sqlite->result());
  }
  return SqlFailure::Permanent;
}

}  // namespace cartonpick::orders
