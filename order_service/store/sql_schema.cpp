#include "store/sql_schema.h"

#include <array>
#include <soci/soci.h>
#include <string>
#include <string_view>

namespace cartonpick::orders {

namespace {

/// The words in which the two differ. A text is compared and ordered byte by byte.
struct Words {
  std::string_view text;
  std::string_view counter;
  std::string_view tableOfItsKey;
};

constexpr Words kSqlite = {"TEXT NOT NULL", "INTEGER PRIMARY KEY", "STRICT, WITHOUT ROWID"};
constexpr Words kPostgres = {"TEXT COLLATE \"C\" NOT NULL", "BIGSERIAL PRIMARY KEY", ""};

// The key of a picked line is all that the tablet reported, so that a fact that arrives twice is
// the same row. It starts with the delivery, which is what rows are looked up by.
constexpr std::array kTables = {
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
};

/// What the statements above make. To run them, though they would find everything, waits for
/// whoever is writing.
constexpr int kObjects = 6;
constexpr auto kCountInSqlite =
    "SELECT count(*) FROM sqlite_master WHERE name IN ('delivery', 'delivery_by_change', "
    "'order_line', 'article', 'article_identity', 'picked_line')";
constexpr auto kCountInPostgres =
    "SELECT count(*) FROM pg_class WHERE pg_table_is_visible(oid) AND relname IN ('delivery', "
    "'delivery_by_change', 'order_line', 'article', 'article_identity', 'picked_line')";

/// Any number that nothing else uses.
constexpr auto kLockSchema = "SELECT pg_advisory_xact_lock(471147114711)";

std::string replaced(std::string text, std::string_view from, std::string_view to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

std::string statementOf(const char *table, const Words &words) {
  std::string sql = replaced(table, "{text}", words.text);
  sql = replaced(sql, "{counter}", words.counter);
  return replaced(sql, "{tableOfItsKey}", words.tableOfItsKey);
}

/// A file of the first version does not know when a line was received.
void addReceivedAt(soci::session &session) {
  int columns = 0;
  session << "SELECT count(*) FROM pragma_table_info('picked_line') WHERE name = 'received_at'",
      soci::into(columns);
  if (columns == 0) {
    session << "ALTER TABLE picked_line ADD COLUMN received_at TEXT NOT NULL DEFAULT ''";
  }
}

bool isComplete(soci::session &session, SqlDialect dialect) {
  int objects = 0;
  session << (dialect == SqlDialect::Postgres ? kCountInPostgres : kCountInSqlite),
      soci::into(objects);
  return objects == kObjects;
}

/// A transaction that no other process's runs beside.
class LoneTransaction {
 public:
  LoneTransaction(soci::session &session, SqlDialect dialect) : m_session(session) {
    if (dialect == SqlDialect::Sqlite) {
      session << "BEGIN IMMEDIATE";
    } else {
      session.begin();
      session << kLockSchema;
    }
  }
  ~LoneTransaction() {
    if (!m_isDone) {
      rollBack();
    }
  }
  LoneTransaction(const LoneTransaction &) = delete;
  LoneTransaction &operator=(const LoneTransaction &) = delete;

  void commit() {
    m_session.commit();
    m_isDone = true;
  }

 private:
  void rollBack() {
    try {
      m_session.rollback();
    } catch (const soci::soci_error &) {
      // The connection is lost, and the transaction with it.
    }
  }

  soci::session &m_session;
  bool m_isDone = false;
};

void makeTables(soci::session &session, SqlDialect dialect) {
  LoneTransaction transaction(session, dialect);
  for (const char *table : kTables) {
    session << statementOf(table, dialect == SqlDialect::Postgres ? kPostgres : kSqlite);
  }
  if (dialect == SqlDialect::Sqlite) {
    addReceivedAt(session);
  }
  transaction.commit();
}

}  // namespace

void makeSchema(soci::session &session, SqlDialect dialect) {
  if (!isComplete(session, dialect)) {
    makeTables(session, dialect);
  }
}

}  // namespace cartonpick::orders
