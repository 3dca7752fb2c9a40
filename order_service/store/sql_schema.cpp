#include "store/sql_schema.h"

#include "store/lone_transaction.h"
#include "store/sql_words.h"

#include <array>
#include <soci/soci.h>
#include <span>
#include <string>

namespace cartonpick::orders {

namespace {

/// The version of stores that have no table of their version.
constexpr int kUnnumbered = 1;

// The key of a picked line is all that the tablet reported, so that a fact that arrives twice is
// the same row. It starts with the delivery, which is what rows are looked up by.
constexpr std::array kFirstTables = {
    R"(CREATE TABLE IF NOT EXISTS delivery (
      number {text}, customer {text}, changed_at {text}, PRIMARY KEY (number)) {tableOfItsKey})",
    "CREATE INDEX IF NOT EXISTS delivery_by_change ON delivery (changed_at DESC, number, customer)",
    R"(CREATE TABLE IF NOT EXISTS order_line (
      delivery {text}, position INTEGER NOT NULL, order_no {text}, customer {text}, brand {text},
      order_date {text}, shipping_date {text}, box {text}, item {text}, barcode {text},
      description {text}, quantity INTEGER NOT NULL,
      PRIMARY KEY (delivery, position)) {tableOfItsKey})",
    R"(CREATE TABLE IF NOT EXISTS article (
      position {counter}, barcode {text}, item {text}, description {text}))",
    R"(CREATE UNIQUE INDEX IF NOT EXISTS article_identity
      ON article (item, barcode, description))",
    R"(CREATE TABLE IF NOT EXISTS picked_line (
      delivery {text}, order_no {text}, box {text}, item {text}, barcode {text},
      quantity INTEGER NOT NULL, picked_at {text}, received_at {text} DEFAULT '',
      PRIMARY KEY (delivery, order_no, box, item, barcode, quantity, picked_at)) {tableOfItsKey})",
    // A program may use the store if its own version is `oldest_program` or newer.
    R"(CREATE TABLE schema_version (
      version INTEGER NOT NULL, oldest_program INTEGER NOT NULL))",
    "INSERT INTO schema_version (version, oldest_program) VALUES (1, 1)",
};

// The number of a report counts those of its delivery and its reopenings, in the order of commit:
// where the clock does not tell which one was later, the number does.
constexpr std::array kNumberedReports = {
    "ALTER TABLE delivery ADD COLUMN reports {number} DEFAULT 0",
    "ALTER TABLE picked_line ADD COLUMN received_no {number} DEFAULT 0",
    R"(CREATE TABLE reopening (
      delivery {text}, number {number}, reopened_at {text},
      PRIMARY KEY (delivery, number)) {tableOfItsKey})",
};

// Number and customer without their case, and the customer that this text is of. Programs of an
// older version write neither: then there is no text, or the customers differ.
constexpr std::array kSearchTexts = {
    "ALTER TABLE delivery ADD COLUMN search_text {text} DEFAULT ''",
    "ALTER TABLE delivery ADD COLUMN search_customer {text} DEFAULT ''",
    R"(CREATE INDEX delivery_to_update ON delivery (number)
      WHERE (search_text = '' OR search_customer <> customer))",
    "DROP INDEX delivery_by_change",
    R"(CREATE INDEX delivery_by_change
      ON delivery (changed_at DESC, number, customer, search_text))",
};

struct Migration {
  int version;        ///< that it leads to
  int oldestProgram;  ///< that can use the store afterwards: the version before, at least
  std::span<const char *const> statements;
};

constexpr std::array kMigrations = {
    Migration{2, 1, kNumberedReports},
    Migration{3, 1, kSearchTexts},
};
static_assert(kMigrations.back().version == kSchemaVersion);

struct StoredVersion {
  int version = 0;
  int oldestProgram = 0;
};

/// Returns the version 0 if the store has none.
StoredVersion storedVersion(soci::session &session, SqlDialect dialect) {
  int tables = 0;
  session << (dialect == SqlDialect::Postgres
                  ? "SELECT count(*) FROM pg_class WHERE pg_table_is_visible(oid) AND "
                    "relname = 'schema_version'"
                  : "SELECT count(*) FROM sqlite_master WHERE name = 'schema_version'"),
      soci::into(tables);
  StoredVersion stored;
  if (tables > 0) {
    session << "SELECT version, oldest_program FROM schema_version", soci::into(stored.version),
        soci::into(stored.oldestProgram);
  }
  return stored;
}

void checkUsable(const StoredVersion &stored) {
  if (stored.oldestProgram > kSchemaVersion) {
    throw soci::soci_error("it has version " + std::to_string(stored.version) +
                           ", and this program knows versions up to " +
                           std::to_string(kSchemaVersion));
  }
}

void runAll(soci::session &session, SqlDialect dialect, std::span<const char *const> statements) {
  for (const char *statement : statements) {
    session << sqlOf(statement, dialect);
  }
}

/// An SQLite file of the very first programs does not know when a line was received.
void addReceivedAt(soci::session &session) {
  int columns = 0;
  session << "SELECT count(*) FROM pragma_table_info('picked_line') WHERE name = 'received_at'",
      soci::into(columns);
  if (columns == 0) {
    session << "ALTER TABLE picked_line ADD COLUMN received_at TEXT NOT NULL DEFAULT ''";
  }
}

void makeFirstTables(soci::session &session, SqlDialect dialect) {
  runAll(session, dialect, kFirstTables);
  if (dialect == SqlDialect::Sqlite) {
    addReceivedAt(session);
  }
}

void migrate(soci::session &session, SqlDialect dialect, const Migration &migration) {
  runAll(session, dialect, migration.statements);
  session << "UPDATE schema_version SET version = :version, oldest_program = :oldest",
      soci::use(migration.version), soci::use(migration.oldestProgram);
}

}  // namespace

void makeSchema(soci::session &session, SqlDialect dialect) {
  StoredVersion stored = storedVersion(session, dialect);
  checkUsable(stored);
  if (stored.version >= kSchemaVersion) {
    return;
  }
  LoneTransaction transaction(session, dialect);
  // Another process may have done it by now.
  stored = storedVersion(session, dialect);
  checkUsable(stored);
  if (stored.version < kUnnumbered) {
    makeFirstTables(session, dialect);
  }
  for (const Migration &migration : kMigrations) {
    if (migration.version > stored.version) {
      migrate(session, dialect, migration);
    }
  }
  transaction.commit();
}

}  // namespace cartonpick::orders
