#pragma once

#include "platform/Folders.h"

#include <QLockFile>

/// Keeps a second program away from the store for as long as it lives.
class StoreLock {
 public:
  explicit StoreLock(const Folders &folders)
      : m_file(folders.documents() + QStringLiteral("/QIR_Pick.lock")) {
    // Only the death of its owner frees the lock, however long a picking lasts.
    m_file.setStaleLockTime(0);
  }

  /// False if another program holds the store, or if the lock cannot be made.
  [[nodiscard]] bool acquire() { return m_file.tryLock(); }
  /// After a lock that was not acquired: whether another program holds it.
  [[nodiscard]] bool isHeldByAnother() const {
    return m_file.error() == QLockFile::LockFailedError;
  }

 private:
  QLockFile m_file;
};
