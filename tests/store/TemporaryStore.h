#pragma once

#include "store/ManagedObjectContext.h"
#include "store/ManagedObjectModel.h"
#include "store/PersistentStoreCoordinator.h"

#include <QFile>
#include <QTemporaryDir>

#include <SQLiteCpp/Database.h>
#include <memory>
#include <utility>

/// Opens the store file at `path` as the program does.
inline std::shared_ptr<PersistentStoreCoordinator> openStore(
    const QString &path, PersistentStoreCoordinator::Migration migration =
                             PersistentStoreCoordinator::Migration::Refuse) {
  auto coordinator = std::make_shared<PersistentStoreCoordinator>(
      std::make_shared<const ManagedObjectModel>(ManagedObjectModel::bundledUrl()));
  coordinator->addPersistentStore(path, migration);
  return coordinator;
}

/// A store file in a temporary folder.
class TemporaryStore {
 public:
  [[nodiscard]] QString path() const {
    return m_folder.filePath(QStringLiteral("QIR_Pick.sqlite"));
  }

  /// Opens the file; creates it if it is missing.
  [[nodiscard]] std::shared_ptr<PersistentStoreCoordinator> open(
      PersistentStoreCoordinator::Migration migration =
          PersistentStoreCoordinator::Migration::Refuse) const {
    return openStore(path(), migration);
  }

  /// Opens a second connection to the file; creates the file if it is missing.
  [[nodiscard]] SQLite::Database connect() const {
    return {path().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE};
  }

  [[nodiscard]] QByteArray bytes() const {
    QFile file(path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  /// Returns the single value of `query`, run on a separate connection.
  [[nodiscard]] QString valueOf(const char *query) const {
    return QString::fromStdString(connect().execAndGet(query).getString());
  }

 private:
  QTemporaryDir m_folder;
};
