#pragma once

#include "disk/DiskModel.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <sqlite3.h>
#include <string>

/// SQLite's way to the disk, on which operations are counted and can be made to fail. It is the way
/// of all connections that are opened while it lives, and there is one at a time.
///
/// A failing write leaves half of what it was to write. To give a lock back, or a file, is not
/// counted and always succeeds.
class FaultyVfs {
 public:
  enum class Fault {
    Once,
    ForGood,
    /// From then on nothing that needs room succeeds, everything else does.
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

  /// The operation of that number, the first being 1, fails as `fault` says.
  void failAt(std::int64_t number, Fault fault);
  /// Keeps `disk` up to date with what reaches the disk.
  void setDisk(DiskModel *disk) { m_disk = disk; }
  using Observer = std::function<void(std::int64_t number, Operation operation)>;

  /// Is called before every operation, one at a time.
  void setObserver(Observer observer) { m_observer = std::move(observer); }
  /// Is called before the first operation that fails.
  void setFaultObserver(Observer observer) { m_faultObserver = std::move(observer); }

  [[nodiscard]] std::int64_t operations() const { return m_operations; }

  static const char *nameOf(Operation operation);

 private:
  struct File;
  struct Calls;

  [[nodiscard]] bool fails(Operation operation);
  [[nodiscard]] int resultOf(Operation operation) const;

  /// One operation at a time, whatever thread it is from.
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
