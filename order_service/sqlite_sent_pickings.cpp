#include "sqlite_sent_pickings.h"

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <stdexcept>

namespace cartonpick::orders {

namespace {

constexpr int kBusyTimeoutMs = 5000;

// The key is the whole row, so that a fact that arrives twice is the same row. It starts with the
// delivery, which is what rows are looked up by.
constexpr auto kSchema = R"(
  CREATE TABLE IF NOT EXISTS picked_line (
    delivery  TEXT NOT NULL,
    order_no  TEXT NOT NULL,
    box       TEXT NOT NULL,
    item      TEXT NOT NULL,
    barcode   TEXT NOT NULL,
    quantity  INTEGER NOT NULL,
    picked_at TEXT NOT NULL,
    PRIMARY KEY (delivery, order_no, box, item, barcode, quantity, picked_at)
  ) STRICT, WITHOUT ROWID
)";

constexpr auto kInsert = "INSERT OR IGNORE INTO picked_line VALUES (?, ?, ?, ?, ?, ?, ?)";

constexpr auto kIsSent = "SELECT EXISTS (SELECT 1 FROM picked_line WHERE delivery = ?)";

void insert(SQLite::Statement &statement, const PickedLine &line) {
  statement.bind(1, line.delivery);
  statement.bind(2, line.order);
  statement.bind(3, line.box);
  statement.bind(4, line.item);
  statement.bind(5, line.barcode);
  statement.bind(6, line.quantity);
  statement.bind(7, line.pickedAt);
  statement.exec();
  statement.reset();
}

SQLite::Database open(const std::string &file) {
  try {
    SQLite::Database database(file, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, kBusyTimeoutMs);
    database.exec("PRAGMA journal_mode = WAL");
    database.exec("PRAGMA synchronous = FULL");
    database.exec(kSchema);
    return database;
  } catch (const SQLite::Exception &error) {
    throw std::runtime_error("the store " + file + " can't be used: " + error.what());
  }
}

}  // namespace

SqliteSentPickings::SqliteSentPickings(const std::string &file) : m_database(open(file)) {}

bool SqliteSentPickings::isSent(std::string_view delivery) const {
  const std::lock_guard lock(m_mutex);
  SQLite::Statement query(m_database, kIsSent);
  query.bind(1, std::string(delivery));
  query.executeStep();
  return query.getColumn(0).getInt() != 0;
}

void SqliteSentPickings::store(const std::vector<PickedLine> &lines) {
  const std::lock_guard lock(m_mutex);
  SQLite::Transaction transaction(m_database, SQLite::TransactionBehavior::IMMEDIATE);
  SQLite::Statement statement(m_database, kInsert);
  for (const PickedLine &line : lines) {
    insert(statement, line);
  }
  transaction.commit();
}

}  // namespace cartonpick::orders
