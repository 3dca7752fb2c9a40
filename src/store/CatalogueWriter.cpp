#include "store/CatalogueWriter.h"

#include "store/PersistentStoreCoordinator.h"

#include <QThread>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <set>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace {

/// The number of SQLite virtual-machine instructions between two checks for an interruption
/// request; they take a few milliseconds.
constexpr int kStepsBetweenLooks = 100'000;

int isInterruptionRequested(void * /*unused*/) {
  return QThread::currentThread()->isInterruptionRequested() ? 1 : 0;
}

std::unique_ptr<SQLite::Database> connectTo(const QString &storePath) {
  auto database = PersistentStoreCoordinator::connectTo(storePath);
  // The catalogue is not confidential. Overwriting deleted rows would double the bytes written.
  database->exec("PRAGMA secure_delete = OFF");
  // CREATE INDEX sorts on a second thread while this one reads the next rows.
  database->exec("PRAGMA threads = 2");
  sqlite3_progress_handler(database->getHandle(), kStepsBetweenLooks, isInterruptionRequested,
                           nullptr);
  return database;
}

struct Index {
  std::string name;
  std::string sql;
};

/// Returns `name` as a quoted SQL identifier; it can contain any character.
std::string quoted(const std::string &name) {
  std::string quoted = "\"";
  for (const char c : name) {
    quoted += c;
    if (c == '"') {
      quoted += c;
    }
  }
  return quoted + '"';
}

std::vector<Index> indexesOfItems(const SQLite::Database &database) {
  std::vector<Index> indexes;
  SQLite::Statement query(
      database, "SELECT name, sql FROM sqlite_master WHERE type = 'index' AND tbl_name = 'Items'");
  while (query.executeStep()) {
    indexes.push_back({query.getColumn(0).getString(), query.getColumn(1).getString()});
  }
  return indexes;
}

/// The type, name and table of every schema entry, in any order.
std::multiset<std::vector<std::string>> schemaOf(const SQLite::Database &database) {
  std::multiset<std::vector<std::string>> schema;
  SQLite::Statement query(database, "SELECT type, name, tbl_name FROM sqlite_master");
  while (query.executeStep()) {
    schema.insert({query.getColumn(0), query.getColumn(1), query.getColumn(2)});
  }
  return schema;
}

/// `text` must outlive the execution of `statement`.
void bindText(SQLite::Statement &statement, int position, const std::optional<std::string> &text) {
  if (text) {
    statement.bindNoCopy(position, *text);
  } else {
    statement.bind(position);
  }
}

}  // namespace

struct CatalogueWriter::Replacement {
  explicit Replacement(const QString &storePath)
      : database(connectTo(storePath)),
        transaction(*database, SQLite::TransactionBehavior::IMMEDIATE),
        schema(schemaOf(*database)),
        indexes(indexesOfItems(*database)) {
    // Building the indexes at the end is many times faster than updating them on each insert.
    for (const Index &index : indexes) {
      database->exec("DROP INDEX " + quoted(index.name));
    }
    database->exec("DELETE FROM Items");
    insert.emplace(*database, "INSERT INTO Items (barcode, item, descr) VALUES (?, ?, ?)");
  }

  void commit() {
    for (const Index &index : indexes) {
      // Runs one statement only; further statements in the stored SQL are ignored.
      SQLite::Statement(*database, index.sql).exec();
    }
    // In a manipulated file, the name of an index can differ from the one in its SQL. Both would
    // exist now, and SQLite could not open the file again.
    if (schemaOf(*database) != schema) {
      throw SQLite::Exception("an index has another name than its SQL", SQLITE_CORRUPT);
    }
    transaction.commit();
    // The log is as large as the catalogue now. A failure to truncate it is harmless.
    database->tryExec("PRAGMA wal_checkpoint(TRUNCATE)");
  }

  std::unique_ptr<SQLite::Database> database;
  SQLite::Transaction transaction;
  std::multiset<std::vector<std::string>> schema;
  std::vector<Index> indexes;
  std::optional<SQLite::Statement> insert;
};

CatalogueWriter::CatalogueWriter(const QString &storePath) {
  try {
    m_replacement = std::make_unique<Replacement>(storePath);
  } catch (const SQLite::Exception &error) {
    m_error = storeErrorOf(error);
  }
}

CatalogueWriter::~CatalogueWriter() = default;

void CatalogueWriter::insert(const Article &article) {
  if (m_error) {
    return;
  }
  try {
    SQLite::Statement &statement = *m_replacement->insert;
    bindText(statement, 1, article.barcode);
    bindText(statement, 2, article.item);
    bindText(statement, 3, article.descr);
    statement.exec();
    statement.reset();
  } catch (const SQLite::Exception &error) {
    m_error = storeErrorOf(error);
  }
}

std::optional<StoreError> CatalogueWriter::save() {
  if (m_error) {
    return m_error;
  }
  try {
    m_replacement->commit();
    return std::nullopt;
  } catch (const SQLite::Exception &error) {
    return storeErrorOf(error);
  }
}
