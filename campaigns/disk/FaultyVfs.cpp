#include "disk/FaultyVfs.h"

#include <new>
#include <string_view>
#include <utility>

namespace {

/// The files that persist after the connection is closed.
constexpr int kLastingFile = SQLITE_OPEN_MAIN_DB | SQLITE_OPEN_MAIN_JOURNAL | SQLITE_OPEN_WAL;
/// The first sync of one of these files also syncs its folder.
constexpr int kLog = SQLITE_OPEN_MAIN_JOURNAL | SQLITE_OPEN_WAL;

}  // namespace

/// A file of this VFS. The real VFS's file follows it in memory.
struct FaultyVfs::File {
  sqlite3_file base;
  FaultyVfs *vfs;
  /// Empty if the file does not persist after the connection is closed.
  std::string path;
  bool syncsNames;

  sqlite3_file *real() { return reinterpret_cast<sqlite3_file *>(this + 1); }
  /// Returns the model of the disk, or null if this file is not in it.
  [[nodiscard]] DiskModel *disk() const { return path.empty() ? nullptr : vfs->m_disk; }
};

/// The functions that SQLite calls.
struct FaultyVfs::Calls {
  using Lock = std::lock_guard<std::recursive_mutex>;

  static FaultyVfs &vfsOf(sqlite3_vfs *vfs) { return *static_cast<FaultyVfs *>(vfs->pAppData); }
  static File &fileOf(sqlite3_file *file) { return *reinterpret_cast<File *>(file); }

  static int open(sqlite3_vfs *base, const char *name, sqlite3_file *sqliteFile, int flags,
                  int *outFlags) {
    FaultyVfs &vfs = vfsOf(base);
    const Lock lock(vfs.m_mutex);
    sqliteFile->pMethods = nullptr;
    if (vfs.fails(Operation::Open)) {
      return vfs.resultOf(Operation::Open);
    }
    File *file = new (sqliteFile) File{{nullptr}, &vfs, {}, (flags & kLog) != 0};
    const int result = vfs.m_real->xOpen(vfs.m_real, name, file->real(), flags, outFlags);
    if (result != SQLITE_OK) {
      file->~File();
      return result;
    }
    if (name != nullptr && (flags & kLastingFile) != 0) {
      file->path = name;
    }
    if (file->disk() != nullptr) {
      file->disk()->open(file->path);
    }
    file->base.pMethods = &kMethods;
    return SQLITE_OK;
  }

  static int remove(sqlite3_vfs *base, const char *name, int syncsNames) {
    FaultyVfs &vfs = vfsOf(base);
    const Lock lock(vfs.m_mutex);
    if (vfs.fails(Operation::Delete)) {
      return vfs.resultOf(Operation::Delete);
    }
    const int result = vfs.m_real->xDelete(vfs.m_real, name, syncsNames);
    if (result == SQLITE_OK && vfs.m_disk != nullptr) {
      vfs.m_disk->remove(name);
      if (syncsNames != 0) {
        vfs.m_disk->syncNames();
      }
    }
    return result;
  }

  static int access(sqlite3_vfs *base, const char *name, int flags, int *result) {
    FaultyVfs &vfs = vfsOf(base);
    const Lock lock(vfs.m_mutex);
    return vfs.fails(Operation::Access) ? vfs.resultOf(Operation::Access)
                                        : vfs.m_real->xAccess(vfs.m_real, name, flags, result);
  }

  static int close(sqlite3_file *base) {
    File &file = fileOf(base);
    const int result = file.real()->pMethods->xClose(file.real());
    file.~File();
    return result;
  }

  static int read(sqlite3_file *base, void *bytes, int count, sqlite3_int64 offset) {
    return forward(base, Operation::Read, [&](File &file) {
      return file.real()->pMethods->xRead(file.real(), bytes, count, offset);
    });
  }

  static int write(sqlite3_file *base, const void *bytes, int count, sqlite3_int64 offset) {
    File &file = fileOf(base);
    const Lock lock(file.vfs->m_mutex);
    const bool isFailing = file.vfs->fails(Operation::Write);
    const int written = isFailing ? count / 2 : count;
    const int result = file.real()->pMethods->xWrite(file.real(), bytes, written, offset);
    if (result == SQLITE_OK && written > 0 && file.disk() != nullptr) {
      file.disk()->write(file.path, static_cast<std::uint64_t>(offset),
                         {static_cast<const char *>(bytes), static_cast<std::size_t>(written)});
    }
    return isFailing ? file.vfs->resultOf(Operation::Write) : result;
  }

  static int truncate(sqlite3_file *base, sqlite3_int64 size) {
    return forward(base, Operation::Truncate, [&](File &file) {
      const int result = file.real()->pMethods->xTruncate(file.real(), size);
      if (result == SQLITE_OK && file.disk() != nullptr) {
        file.disk()->truncate(file.path, static_cast<std::uint64_t>(size));
      }
      return result;
    });
  }

  static int sync(sqlite3_file *base, int flags) {
    File &file = fileOf(base);
    const Lock lock(file.vfs->m_mutex);
    DiskModel *disk = file.disk();
    if (file.vfs->fails(Operation::Sync)) {
      if (disk != nullptr) {
        disk->failSync(file.path);
      }
      return file.vfs->resultOf(Operation::Sync);
    }
    const int result = file.real()->pMethods->xSync(file.real(), flags);
    if (result == SQLITE_OK && disk != nullptr) {
      disk->syncFile(file.path);
      if (std::exchange(file.syncsNames, false)) {
        disk->syncNames();
      }
    }
    return result;
  }

  static int fileSize(sqlite3_file *base, sqlite3_int64 *size) {
    return forward(base, Operation::FileSize,
                   [&](File &file) { return file.real()->pMethods->xFileSize(file.real(), size); });
  }

  static int lock(sqlite3_file *base, int level) {
    return forward(base, Operation::Lock,
                   [&](File &file) { return file.real()->pMethods->xLock(file.real(), level); });
  }

  static int unlock(sqlite3_file *base, int level) {
    File &file = fileOf(base);
    return file.real()->pMethods->xUnlock(file.real(), level);
  }

  static int checkReservedLock(sqlite3_file *base, int *result) {
    return forward(base, Operation::Lock, [&](File &file) {
      return file.real()->pMethods->xCheckReservedLock(file.real(), result);
    });
  }

  static int fileControl(sqlite3_file *base, int operation, void *argument) {
    File &file = fileOf(base);
    return file.real()->pMethods->xFileControl(file.real(), operation, argument);
  }

  static int sectorSize(sqlite3_file *base) {
    File &file = fileOf(base);
    return file.real()->pMethods->xSectorSize(file.real());
  }

  static int deviceCharacteristics(sqlite3_file *base) {
    File &file = fileOf(base);
    return file.real()->pMethods->xDeviceCharacteristics(file.real());
  }

  static int mapShared(sqlite3_file *base, int page, int pageSize, int extends,
                       void volatile **memory) {
    return forward(base, Operation::MapShared, [&](File &file) {
      return file.real()->pMethods->xShmMap(file.real(), page, pageSize, extends, memory);
    });
  }

  static int lockShared(sqlite3_file *base, int offset, int count, int flags) {
    const auto real = [&](File &file) {
      return file.real()->pMethods->xShmLock(file.real(), offset, count, flags);
    };
    return (flags & SQLITE_SHM_UNLOCK) != 0 ? real(fileOf(base))
                                            : forward(base, Operation::LockShared, real);
  }

  static void barrier(sqlite3_file *base) {
    File &file = fileOf(base);
    file.real()->pMethods->xShmBarrier(file.real());
  }

  static int unmapShared(sqlite3_file *base, int removes) {
    File &file = fileOf(base);
    return file.real()->pMethods->xShmUnmap(file.real(), removes);
  }

  template <class Real>
  static int forward(sqlite3_file *base, Operation operation, const Real &real) {
    File &file = fileOf(base);
    const Lock lock(file.vfs->m_mutex);
    return file.vfs->fails(operation) ? file.vfs->resultOf(operation) : real(file);
  }

  static constexpr int kVersionWithSharedMemory = 2;
  static constexpr sqlite3_io_methods kMethods{.iVersion = kVersionWithSharedMemory,
                                               .xClose = close,
                                               .xRead = read,
                                               .xWrite = write,
                                               .xTruncate = truncate,
                                               .xSync = sync,
                                               .xFileSize = fileSize,
                                               .xLock = lock,
                                               .xUnlock = unlock,
                                               .xCheckReservedLock = checkReservedLock,
                                               .xFileControl = fileControl,
                                               .xSectorSize = sectorSize,
                                               .xDeviceCharacteristics = deviceCharacteristics,
                                               .xShmMap = mapShared,
                                               .xShmLock = lockShared,
                                               .xShmBarrier = barrier,
                                               .xShmUnmap = unmapShared,
                                               .xFetch = nullptr,
                                               .xUnfetch = nullptr};
};

FaultyVfs::FaultyVfs() : m_real(sqlite3_vfs_find(nullptr)), m_vfs(*m_real) {
  static_assert(sizeof(File) % alignof(std::int64_t) == 0);
  m_vfs.szOsFile = static_cast<int>(sizeof(File)) + m_real->szOsFile;
  m_vfs.pNext = nullptr;
  m_vfs.zName = "faulty";
  m_vfs.pAppData = this;
  m_vfs.xOpen = Calls::open;
  m_vfs.xDelete = Calls::remove;
  m_vfs.xAccess = Calls::access;
  sqlite3_vfs_register(&m_vfs, 1);
}

FaultyVfs::~FaultyVfs() {
  sqlite3_vfs_unregister(&m_vfs);
  sqlite3_vfs_register(m_real, 1);
}

void FaultyVfs::failAt(std::int64_t number, Fault fault) {
  m_failAt = number;
  m_fault = fault;
}

bool FaultyVfs::fails(Operation operation) {
  ++m_operations;
  if (m_observer) {
    m_observer(m_operations, operation);
  }
  const bool isReached = m_failAt != 0 && m_operations >= m_failAt;
  const bool needsRoom = operation == Operation::Write || operation == Operation::MapShared;
  const bool isFailing = isReached && (m_fault == Fault::Once       ? m_operations == m_failAt
                                       : m_fault == Fault::DiskFull ? needsRoom
                                                                    : true);
  if (isFailing && m_faultObserver && !std::exchange(m_isFaultReported, true)) {
    m_faultObserver(m_operations, operation);
  }
  return isFailing;
}

int FaultyVfs::resultOf(Operation operation) const {
  switch (operation) {
    case Operation::Open:
      return SQLITE_CANTOPEN;
    case Operation::Delete:
      return SQLITE_IOERR_DELETE;
    case Operation::Access:
      return SQLITE_IOERR_ACCESS;
    case Operation::Read:
      return SQLITE_IOERR_READ;
    case Operation::Write:
      return m_fault == Fault::DiskFull ? SQLITE_FULL : SQLITE_IOERR_WRITE;
    case Operation::Truncate:
      return SQLITE_IOERR_TRUNCATE;
    case Operation::Sync:
      return SQLITE_IOERR_FSYNC;
    case Operation::FileSize:
      return SQLITE_IOERR_FSTAT;
    case Operation::Lock:
      return SQLITE_IOERR_LOCK;
    case Operation::MapShared:
      return SQLITE_IOERR_SHMMAP;
    case Operation::LockShared:
      return SQLITE_IOERR_SHMLOCK;
  }
  return SQLITE_IOERR;
}

const char *FaultyVfs::nameOf(Operation operation) {
  switch (operation) {
    case Operation::Open:
      return "open";
    case Operation::Delete:
      return "delete";
    case Operation::Access:
      return "access";
    case Operation::Read:
      return "read";
    case Operation::Write:
      return "write";
    case Operation::Truncate:
      return "truncate";
    case Operation::Sync:
      return "sync";
    case Operation::FileSize:
      return "size";
    case Operation::Lock:
      return "lock";
    case Operation::MapShared:
      return "map";
    case Operation::LockShared:
      return "lock of the index";
  }
  return "";
}
