#pragma once

#include "store/ManagedObjectModel.h"

#include <QString>

#include <memory>

namespace SQLite {
class Database;
}

/// Opens the one SQLite file that holds the entities of a model.
class PersistentStoreCoordinator {
 public:
  enum class Migration { Refuse, Automatic };

  explicit PersistentStoreCoordinator(std::shared_ptr<const ManagedObjectModel> model);
  ~PersistentStoreCoordinator();
  PersistentStoreCoordinator(const PersistentStoreCoordinator &) = delete;
  PersistentStoreCoordinator &operator=(const PersistentStoreCoordinator &) = delete;

  /// Opens the file at `path`, or makes it. A file of an older model is opened only with automatic
  /// migration: it gains the tables, columns and indexes that it lacks, in one transaction, and
  /// keeps what it has. A file of a newer model is never written to. False, with a line in the
  /// log, if the file cannot be opened.
  bool addPersistentStore(const QString &path, Migration migration);

  /// One more connection to the store at `path`, as durable as the first. Throws SQLite::Exception.
  static std::unique_ptr<SQLite::Database> connectTo(const QString &path);

  [[nodiscard]] bool hasStore() const { return m_database != nullptr; }
  /// The open store, or nothing.
  [[nodiscard]] SQLite::Database *database() const { return m_database.get(); }

 private:
  std::shared_ptr<const ManagedObjectModel> m_model;
  std::unique_ptr<SQLite::Database> m_database;
};
