#include "store/PersistentStoreCoordinator.h"

#include "base/OwnFiles.h"
#include "store/WriteAheadLog.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <algorithm>
#include <array>
#include <set>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

using Entity = ManagedObjectModel::Entity;

/// How long a statement waits for a lock held by another connection, such as a backup's.
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

/// Adds the tables, columns and indexes of `model` that `database` lacks, and sets its version.
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

/// Throws std::runtime_error if the file is damaged. If two tables share a page, a write to one
/// overwrites rows of the other; a B-tree with a cycle would be read forever.
void requireWhole(SQLite::Database &database) {
  std::string finding = database.execAndGet("PRAGMA quick_check(1)").getString();
  if (finding != "ok") {
    std::replace(finding.begin(), finding.end(), '\n', ' ');
    throw std::runtime_error("the file is damaged: " + finding);
  }
}

/// Throws std::runtime_error if the text encoding in the file header is invalid. SQLite would
/// assume UTF-8 now and reject the file the next time it reads the schema.
void requireEncoding(SQLite::Database &database) {
  constexpr sqlite3_int64 kPlaceInFile = 56;
  sqlite3_file *file = nullptr;
  std::array<unsigned char, 4> number{};
  sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
  if (file->pMethods->xRead(file, number.data(), number.size(), kPlaceInFile) == SQLITE_OK &&
      number != decltype(number){} && (number.back() & 3U) == 0) {
    throw std::runtime_error("the file is damaged: its text encoding is unknown");
  }
}

void requireVersion(SQLite::Database &database, const ManagedObjectModel &model,
                    PersistentStoreCoordinator::Migration migration) {
  const int version = database.execAndGet("PRAGMA user_version").getInt();
  if (version > model.version()) {
    // Leaves the file untouched: no checkpoint of its log when the connection closes.
    sqlite3_db_config(database.getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    throw std::runtime_error("the file is of model version " + std::to_string(version) +
                             ", newer than this program's " + std::to_string(model.version()));
  }
  requireWhole(database);
  requireEncoding(database);
  bringLogToDisk(database);
  if (version == model.version()) {
    return;
  }
  if (!isNew(database) && migration == PersistentStoreCoordinator::Migration::Refuse) {
    throw std::runtime_error("the file is of the older model version " + std::to_string(version));
  }
  bringUpTo(database, model);
}

/// Claims the file at `path` and the files that SQLite keeps beside it; throws std::runtime_error
/// if one of them is not a regular file owned by this user. Creates a missing file with mode 0600
/// before SQLite writes data to it.
void claimStore(const QString &path) {
  for (const QString &name : {path, path + QStringLiteral("-wal"), path + QStringLiteral("-shm"),
                              path + QStringLiteral("-journal")}) {
    const QString objection = claimFile(name);
    if (!objection.isEmpty()) {
      throw std::runtime_error(
          QStringLiteral("%1: %2").arg(QFileInfo(name).fileName(), objection).toStdString());
    }
  }
  QFile file(path);
  if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner)) {
    claimFile(path);
  }
}

/// Returns `path` with all symbolic links in its folder resolved.
QString withRealFolder(const QString &path) {
  const QString folder = QFileInfo(path).dir().canonicalPath();
  return folder.isEmpty() ? path : folder + u'/' + QFileInfo(path).fileName();
}

/// Prevents `database` from executing code from its file, which can come from another user: no
/// triggers, views or virtual tables, and only functions that SQLite marks as innocuous. The
/// program's own stores use none of these.
void runNothingOfTheFile(sqlite3 *database) {
  constexpr std::array kSettings{
      std::pair(SQLITE_DBCONFIG_DEFENSIVE, 1), std::pair(SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0),
      std::pair(SQLITE_DBCONFIG_ENABLE_TRIGGER, 0), std::pair(SQLITE_DBCONFIG_ENABLE_VIEW, 0)};
  for (const auto &[setting, value] : kSettings) {
    sqlite3_db_config(database, setting, value, nullptr);
  }
  sqlite3_drop_modules(database, nullptr);
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
    claimStore(path);
    auto database = connectTo(path);
    requireVersion(*database, *m_model, migration);
    database->exec("PRAGMA journal_mode = WAL");
    m_database = std::move(database);
    m_errorString.clear();
    return true;
  } catch (const std::exception &error) {
    qWarning("Store %s not opened: %s", qUtf8Printable(path), error.what());
    m_errorString = QString::fromUtf8(error.what());
    return false;
  }
}

std::unique_ptr<SQLite::Database> PersistentStoreCoordinator::connectTo(const QString &path) {
  // OPEN_NOMUTEX: a connection is used only on the thread that created it.
  auto database = std::make_unique<SQLite::Database>(
      withRealFolder(path).toStdString(),
      SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX | SQLite::OPEN_NOFOLLOW,
      kBusyTimeoutMilliseconds);
  runNothingOfTheFile(database->getHandle());
  // Detects a damaged page when it is loaded, before its cells are used.
  database->exec("PRAGMA cell_size_check = ON");
  // A confirmed quantity must be on disk before the screen shows it.
  database->exec("PRAGMA synchronous = FULL");
  return database;
}
