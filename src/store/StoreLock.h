#pragma once

#include "base/Folders.h"
#include "base/OwnFiles.h"

#include <QDebug>
#include <QLockFile>

/// A lock file that allows one process per store. The destructor releases the lock.
class StoreLock {
 public:
  explicit StoreLock(const Folders &folders)
      : m_file(folders.documents() + QStringLiteral("/QIR_Pick.lock")) {
    // The lock never expires by age: a picking can last for days.
    m_file.setStaleLockTime(0);
  }

  /// Returns false if another process holds the lock, or if the lock file cannot be created or is
  /// not a regular file owned by this user (the latter is logged).
  [[nodiscard]] bool acquire() {
    const QString objection = claimFile(m_file.fileName());
    if (!objection.isEmpty()) {
      qWarning("Lock %s not used: %s.", qUtf8Printable(m_file.fileName()),
               qUtf8Printable(objection));
      return false;
    }
    return m_file.tryLock() && claimFile(m_file.fileName()).isEmpty();
  }
  /// Returns true if the last `acquire` failed because another process holds the lock.
  [[nodiscard]] bool isHeldByAnother() const {
    return m_file.error() == QLockFile::LockFailedError;
  }

 private:
  QLockFile m_file;
};
