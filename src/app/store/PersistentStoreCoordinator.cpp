#include "app/store/PersistentStoreCoordinator.h"

#include <QDebug>
#include <QFile>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <set>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

using Entity = ManagedObjectModel::Entity;

/// How long a statement waits for another connection that reads the file, a backup for example.
constexpr int kBusyTimeoutMilliseconds = 5000;

std::string quoted(const QString &name) {
  return '"' + name.toStdString() + '"';
}

std::set<std::string> columnsOf(const SQLite::Database &database, const Entity &entity) {
  std::set<std::string> columns;
  SQLite::Statement query(database, "SELECT name FROM pragma_table_info(?)");
  query.bind(1, entity.name.toStdString());
  while (query.executeStep()) {
    columns.insert(query.getColumn(0).getString());
  }
  return columns;
}

void createTable(SQLite::Database &database, const Entity &entity) {
  std::string columns;
  for (const auto &attribute : entity.attributes) {
    columns +=
        (columns.empty() ? "" : ", ") + quoted(attribute.name) + ' ' + attribute.type.toStdString();
  }
  database.exec("CREATE TABLE " + quoted(entity.name) + " (" + columns + ")");
}

void addMissingColumns(SQLite::Database &database, const Entity &entity,
                       const std::set<std::string> &columns) {
  for (const auto &attribute : entity.attributes) {
    if (!columns.contains(attribute.name.toStdString())) {
      database.exec("ALTER TABLE " + quoted(entity.name) + " ADD COLUMN " + quoted(attribute.name) +
                    ' ' + attribute.type.toStdString());
    }
  }
}

void createMissingIndexes(SQLite::Database &database, const Entity &entity) {
  for (const QStringList &index : entity.indexes) {
    std::string columns;
    for (const QString &column : index) {
      columns += (columns.empty() ? "" : ", ") + quoted(column);
    }
    const QString name = entity.name + u'_' + index.join(u'_');
    database.exec("CREATE INDEX IF NOT EXISTS " + quoted(name) + " ON " + quoted(entity.name) +
                  " (" + columns + ")");
  }
}

/// Gives the file whatever the model has and it lacks.
void bringUpTo(SQLite::Database &database, const ManagedObjectModel &model) {
  SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
  for (const Entity &entity : model.entities()) {
    const std::set<std::string> columns = columnsOf(database, entity);
    if (columns.empty()) {
      createTable(database, entity);
    } else {
      addMissingColumns(database, entity, columns);
    }
    createMissingIndexes(database, entity);
  }
  database.exec("PRAGMA user_version = " + std::to_string(model.version()));
  transaction.commit();
}

bool isNew(SQLite::Database &database) {
  return database.execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 0;
}

void requireVersion(SQLite::Database &database, const ManagedObjectModel &model,
                    PersistentStoreCoordinator::Migration migration) {
  const int version = database.execAndGet("PRAGMA user_version").getInt();
  if (version == model.version()) {
    return;
  }
  if (version > model.version()) {
    // Not even what its log holds is brought into the file when the connection closes.
    sqlite3_db_config(database.getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    throw std::runtime_error("the file is of model version " + std::to_string(version) +
                             ", newer than this program's " + std::to_string(model.version()));
  }
  if (!isNew(database) && migration == PersistentStoreCoordinator::Migration::Refuse) {
    throw std::runtime_error("the file is of the older model version " + std::to_string(version));
  }
  bringUpTo(database, model);
}

/// Makes a missing file, so that it is its owner's alone before anything is in it.
void createForOwnerOnly(const QString &path) {
  QFile file(path);
  if (!file.exists() && file.open(QIODevice::WriteOnly)) {
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  }
}

}  // namespace

PersistentStoreCoordinator::PersistentStoreCoordinator(
    std::shared_ptr<const ManagedObjectModel> model)
    : m_model(std::move(model)) {}

PersistentStoreCoordinator::~PersistentStoreCoordinator() = default;

bool PersistentStoreCoordinator::addPersistentStore(const QString &path, Migration migration) {
  try {
    if (m_model->entities().empty()) {
      throw std::runtime_error("there is no model");
    }
    createForOwnerOnly(path);
    auto database = connectTo(path);
    requireVersion(*database, *m_model, migration);
    database->exec("PRAGMA journal_mode = WAL");
    m_database = std::move(database);
    return true;
  } catch (const std::exception &error) {
    qWarning("Store %s not opened: %s", qUtf8Printable(path), error.what());
    return false;
  }
}

std::unique_ptr<SQLite::Database> PersistentStoreCoordinator::connectTo(const QString &path) {
  // A connection stays on the thread that made it.
  auto database = std::make_unique<SQLite::Database>(
      path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX, kBusyTimeoutMilliseconds);
  // What is confirmed must be on disk before anything on screen says so.
  database->exec("PRAGMA synchronous = FULL");
  return database;
}
