#pragma once

#include "store/ManagedObjectContext.h"
#include "store/ManagedObjectModel.h"
#include "store/PersistentStoreCoordinator.h"

#include <QFile>
#include <QTemporaryDir>

#include <SQLiteCpp/Database.h>
#include <memory>
#include <utility>

/// The store file at `path`, opened as the program opens it.
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

  /// Opens the file, or makes it.
  [[nodiscard]] std::shared_ptr<PersistentStoreCoordinator> open(
      PersistentStoreCoordinator::Migration migration =
          PersistentStoreCoordinator::Migration::Refuse) const {
    return openStore(path(), migration);
  }

  /// Another connection to the file, which is made if there is none.
  [[nodiscard]] SQLite::Database connect() const {
    return {path().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE};
  }

  [[nodiscard]] QByteArray bytes() const {
    QFile file(path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  /// The one value that `query` gives on a connection of its own.
  [[nodiscard]] QString valueOf(const char *query) const {
    return QString::fromStdString(connect().execAndGet(query).getString());
  }

 private:
  QTemporaryDir m_folder;
};
