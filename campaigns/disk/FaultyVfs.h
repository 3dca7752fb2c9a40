#pragma once

#include "disk/DiskModel.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <sqlite3.h>
#include <string>

/// An SQLite VFS that counts its operations and can make them fail. All connections opened during
/// its lifetime use it. Only one can exist at a time.
///
/// A failing write writes half of its bytes. Unlocking and closing are not counted and never fail
/// on purpose.
class FaultyVfs {
 public:
  enum class Fault {
    Once,
    ForGood,
    /// From then on, only operations that need disk space fail.
    DiskFull
  };
  enum class Operation {
    Open,
    Delete,
    Access,
    Read,
    Write,
    Truncate,
    Sync,
    FileSize,
    Lock,
    MapShared,
    LockShared
  };

  FaultyVfs();
  ~FaultyVfs();
  FaultyVfs(const FaultyVfs &) = delete;
  FaultyVfs &operator=(const FaultyVfs &) = delete;

  /// Makes the operation with this number fail, counted from 1; 0 stops all failures.
  void failAt(std::int64_t number, Fault fault);
  /// Passes all changes on to `disk`, which must outlive this object. Null by default.
  void setDisk(DiskModel *disk) { m_disk = disk; }
  using Observer = std::function<void(std::int64_t number, Operation operation)>;

  /// Sets the function that is called before every operation; calls never overlap.
  void setObserver(Observer observer) { m_observer = std::move(observer); }
  /// Sets the function that is called before the first operation that fails.
  void setFaultObserver(Observer observer) { m_faultObserver = std::move(observer); }

  [[nodiscard]] std::int64_t operations() const { return m_operations; }

  static const char *nameOf(Operation operation);

 private:
  struct File;
  struct Calls;

  [[nodiscard]] bool fails(Operation operation);
  [[nodiscard]] int resultOf(Operation operation) const;

  /// Serialises the operations of all threads.
  std::recursive_mutex m_mutex;
  sqlite3_vfs *m_real;
  sqlite3_vfs m_vfs{};
  std::int64_t m_operations = 0;
  std::int64_t m_failAt = 0;
  Fault m_fault = Fault::Once;
  bool m_isFaultReported = false;
  DiskModel *m_disk = nullptr;
  Observer m_observer;
  Observer m_faultObserver;
};
