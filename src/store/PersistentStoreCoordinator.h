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

  /// Opens the SQLite file at `path`, or creates it.
  ///
  /// A file of an older model version is opened only with `Migration::Automatic`, which adds the
  /// missing tables, columns and indexes in one transaction and keeps all data. A file of a newer
  /// version is never opened or written to.
  ///
  /// Returns false and logs the reason, which `errorString` returns, if the file cannot be opened.
  bool addPersistentStore(const QString &path, Migration migration);

  /// Opens another connection to the existing store at `path`, with the same durability settings.
  /// Throws SQLite::Exception if the store cannot be opened.
  static std::unique_ptr<SQLite::Database> connectTo(const QString &path);

  /// The reason why the last file could not be opened; empty if it could.
  [[nodiscard]] QString errorString() const { return m_errorString; }
  [[nodiscard]] bool hasStore() const { return m_database != nullptr; }
  /// The open store, or nullptr. It is owned by the coordinator.
  [[nodiscard]] SQLite::Database *database() const { return m_database.get(); }

 private:
  std::shared_ptr<const ManagedObjectModel> m_model;
  std::unique_ptr<SQLite::Database> m_database;
  QString m_errorString;
};
