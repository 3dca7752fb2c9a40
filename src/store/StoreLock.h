#pragma once

#include "base/Folders.h"
#include "base/OwnFiles.h"

#include <QDebug>
#include <QLockFile>

/// Keeps a second program away from the store for as long as it lives.
class StoreLock {
 public:
  explicit StoreLock(const Folders &folders)
      : m_file(folders.documents() + QStringLiteral("/QIR_Pick.lock")) {
    // Only the death of its owner frees the lock, however long a picking lasts.
    m_file.setStaleLockTime(0);
  }

  /// False if another program holds the store, or if the lock cannot be made, or if somebody else
  /// has put something in its place.
  [[nodiscard]] bool acquire() {
    const QString objection = claimFile(m_file.fileName());
    if (!objection.isEmpty()) {
      qWarning("Lock %s not used: %s.", qUtf8Printable(m_file.fileName()),
               qUtf8Printable(objection));
      return false;
    }
    return m_file.tryLock() && claimFile(m_file.fileName()).isEmpty();
  }
  /// After a lock that was not acquired: whether another program holds it.
  [[nodiscard]] bool isHeldByAnother() const {
    return m_file.error() == QLockFile::LockFailedError;
  }

 private:
  QLockFile m_file;
};
