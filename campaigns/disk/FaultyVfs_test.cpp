#include "disk/FaultyVfs.h"

#include "support/TestClass.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <string>
#include <utility>

namespace {

constexpr int kRows = 30;

SQLite::Database openStore(const QString &folder) {
  return {(folder + QStringLiteral("/store.sqlite")).toStdString(),
          SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE};
}

void makeTable(SQLite::Database &store) {
  store.exec("PRAGMA journal_mode = WAL");
  store.exec("PRAGMA synchronous = FULL");
  store.exec("CREATE TABLE Picks (id INTEGER)");
}

int rowsIn(SQLite::Database &store) {
  return store.execAndGet("SELECT count(*) FROM Picks").getInt();
}

/// Executes `statement`. Returns SQLite's extended error code, or SQLITE_OK.
int codeOf(SQLite::Database &store, const char *statement) {
  return store.tryExec(statement) == SQLITE_OK ? SQLITE_OK : store.getExtendedErrorCode();
}

/// The state of the store after a power loss, as read through SQLite's own VFS.
struct Found {
  QString integrity;
  int rows = 0;
};

/// Returns the state of the store if `disk` lost power now.
Found afterPowerLoss(DiskModel &disk) {
  const QTemporaryDir folder;
  disk.writeAfterPowerLoss(folder.path().toStdString());
  SQLite::Database store(folder.filePath(QStringLiteral("store.sqlite")).toStdString(),
                         SQLite::OPEN_READWRITE, 0, "unix");
  return {QString::fromStdString(store.execAndGet("PRAGMA integrity_check").getString()),
          store.execAndGet("SELECT count(*) FROM Picks").getInt()};
}

/// Inserts rows under the pragma `synchronous`, one per commit, and simulates a power loss after
/// each commit. Returns the number of losses after which a row was missing.
int losses(const char *synchronous) {
  const QTemporaryDir folder;
  DiskModel disk(1);
  FaultyVfs vfs;
  vfs.setDisk(&disk);
  SQLite::Database store = openStore(folder.path());
  makeTable(store);
  // The table is certainly on the disk before the power losses begin.
  store.exec("INSERT INTO Picks VALUES (0)");
  store.exec(synchronous);
  int missing = 0;
  for (int row = 1; row <= kRows; ++row) {
    store.exec("INSERT INTO Picks VALUES (1)");
    missing += afterPowerLoss(disk).rows == row + 1 ? 0 : 1;
  }
  return missing;
}

}  // namespace

class FaultyVfsTest : public QObject {
  Q_OBJECT

 private slots:
  void withoutFaultsItBehavesLikeTheRealVfs() {
    const QTemporaryDir folder;
    {
      const FaultyVfs vfs;
      SQLite::Database store = openStore(folder.path());
      makeTable(store);
      store.exec("INSERT INTO Picks VALUES (1)");
      QVERIFY(vfs.operations() > 0);
    }
    SQLite::Database store = openStore(folder.path());
    QCOMPARE(rowsIn(store), 1);
  }

  void theRealVfsIsRestoredOnDestruction() {
    const std::string real = sqlite3_vfs_find(nullptr)->zName;
    {
      const FaultyVfs vfs;
      QCOMPARE(std::string(sqlite3_vfs_find(nullptr)->zName), std::string("faulty"));
    }
    QCOMPARE(std::string(sqlite3_vfs_find(nullptr)->zName), real);
  }

  void aTransientFaultFailsOnlyTheGivenOperation() {
    const QTemporaryDir folder;
    FaultyVfs vfs;
    SQLite::Database store = openStore(folder.path());
    makeTable(store);
    // First the statement's first operation fails, then its second and so on, until none is left.
    int failures = 0;
    bool isFaultReached = true;
    for (int n = 1; isFaultReached; ++n) {
      isFaultReached = false;
      vfs.setFaultObserver([&](std::int64_t, FaultyVfs::Operation) { isFaultReached = true; });
      vfs.failAt(vfs.operations() + n, FaultyVfs::Fault::Once);
      failures += codeOf(store, "INSERT INTO Picks VALUES (1)") == SQLITE_OK ? 0 : 1;
      vfs.failAt(0, FaultyVfs::Fault::Once);
      QCOMPARE(codeOf(store, "INSERT INTO Picks VALUES (2)"), SQLITE_OK);
    }
    QVERIFY(failures > 0);
    QCOMPARE(store.execAndGet("SELECT count(*) FROM Picks WHERE id = 2").getInt(),
             store.execAndGet("SELECT count(*) FROM Picks WHERE id = 1").getInt() + failures);
  }

  void aPermanentFaultFailsAllLaterOperations() {
    const QTemporaryDir folder;
    FaultyVfs vfs;
    SQLite::Database store = openStore(folder.path());
    makeTable(store);
    vfs.failAt(vfs.operations() + 1, FaultyVfs::Fault::ForGood);
    for (int i = 0; i < 3; ++i) {
      QVERIFY(codeOf(store, "INSERT INTO Picks VALUES (1)") != SQLITE_OK);
    }
  }

  void aFullDiskFailsWritesWithSqliteFullButCanBeRead() {
    const QTemporaryDir folder;
    FaultyVfs vfs;
    SQLite::Database store = openStore(folder.path());
    makeTable(store);
    vfs.failAt(vfs.operations() + 1, FaultyVfs::Fault::DiskFull);
    QCOMPARE(codeOf(store, "INSERT INTO Picks VALUES (1)"), SQLITE_FULL);
    QCOMPARE(rowsIn(store), 0);
  }

  void onlyTheFirstFailureIsReportedWithItsOperation() {
    const QTemporaryDir folder;
    FaultyVfs vfs;
    SQLite::Database store = openStore(folder.path());
    makeTable(store);
    QList<std::pair<std::int64_t, FaultyVfs::Operation>> reported;
    vfs.setFaultObserver([&](std::int64_t number, FaultyVfs::Operation operation) {
      reported.append({number, operation});
    });
    const std::int64_t next = vfs.operations() + 1;
    vfs.failAt(next, FaultyVfs::Fault::DiskFull);
    QVERIFY(codeOf(store, "INSERT INTO Picks VALUES (1)") != SQLITE_OK);
    QVERIFY(codeOf(store, "INSERT INTO Picks VALUES (1)") != SQLITE_OK);
    QCOMPARE(reported.size(), 1);
    QVERIFY(reported.front().first >= next);
    QCOMPARE(reported.front().second, FaultyVfs::Operation::Write);
  }

  void aFailedWriteWritesHalfOfItsBytes() {
    const QTemporaryDir folder;
    FaultyVfs vfs;
    sqlite3_vfs *registered = sqlite3_vfs_find("faulty");
    QByteArray memory(registered->szOsFile, '\0');
    auto *file = reinterpret_cast<sqlite3_file *>(memory.data());
    const QByteArray path = folder.filePath(QStringLiteral("file")).toUtf8();
    QCOMPARE(registered->xOpen(
                 registered, path.constData(), file,
                 SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_TRANSIENT_DB, nullptr),
             SQLITE_OK);
    vfs.failAt(vfs.operations() + 1, FaultyVfs::Fault::Once);
    QCOMPARE(file->pMethods->xWrite(file, "12345678", 8, 0), SQLITE_IOERR_WRITE);
    file->pMethods->xClose(file);
    QFile written(QString::fromUtf8(path));
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll(), "1234");
  }

  void syncedDataSurvivesEveryPowerLoss() { QCOMPARE(losses("PRAGMA synchronous = FULL"), 0); }

  void unsyncedDataIsSometimesLost() {
    const int missing = losses("PRAGMA synchronous = OFF");
    QVERIFY2(missing > 0 && missing < kRows, qPrintable(QString::number(missing)));
  }

  void aLaterSyncDoesNotRecoverDataLostByAFailedOne() {
    DiskModel disk(1);
    const QTemporaryDir home;
    const DiskModel::Path file = home.filePath(QStringLiteral("file")).toStdString();
    int lost = 0;
    for (int i = 0; i < kRows; ++i) {
      DiskModel::Path each = file;
      each += std::to_string(i);
      disk.open(each);
      disk.write(each, 0, "first");
      disk.failSync(each);
      disk.write(each, 5, "second");
      disk.syncFile(each);
    }
    disk.syncNames();
    const QTemporaryDir image;
    disk.writeCertain(image.path().toStdString());
    for (int i = 0; i < kRows; ++i) {
      QFile written(image.filePath(QStringLiteral("file%1").arg(i)));
      QVERIFY(written.open(QIODevice::ReadOnly));
      const QByteArray bytes = written.readAll();
      QCOMPARE(bytes.mid(5), "second");
      lost += bytes.startsWith("first") ? 0 : 1;
    }
    QVERIFY(lost > 0);
  }

  void writesAreTornOnlyAtSectorBoundaries() {
    const QTemporaryDir home;
    const DiskModel::Path file = home.filePath(QStringLiteral("file")).toStdString();
    DiskModel disk(1);
    disk.open(file);
    disk.write(file, 0, std::string(4 * DiskModel::kSectorBytes, 'x'));
    disk.syncNames();
    int torn = 0;
    for (int i = 0; i < kRows; ++i) {
      const QTemporaryDir image;
      disk.writeAfterPowerLoss(image.path().toStdString());
      QFile written(image.filePath(QStringLiteral("file")));
      QVERIFY(written.open(QIODevice::ReadOnly));
      const QByteArray bytes = written.readAll();
      QCOMPARE(bytes.count('x') % static_cast<qsizetype>(DiskModel::kSectorBytes), 0);
      torn += bytes.contains('x') && bytes.count('x') < 4 * 512 ? 1 : 0;
    }
    QVERIFY(torn > 0);
  }

  void untilTheFolderIsSyncedNewFilesCanVanishAndRemovedFilesCanReturn() {
    const QTemporaryDir home;
    const DiskModel::Path older = home.filePath(QStringLiteral("older")).toStdString();
    const DiskModel::Path newer = home.filePath(QStringLiteral("newer")).toStdString();
    DiskModel disk(1);
    disk.open(older);
    disk.syncNames();
    disk.remove(older);
    disk.open(newer);
    QSet<QStringList> seen;
    for (int i = 0; i < kRows; ++i) {
      const QTemporaryDir image;
      disk.writeAfterPowerLoss(image.path().toStdString());
      seen.insert(QDir(image.path()).entryList(QDir::Files));
    }
    QCOMPARE(seen, QSet<QStringList>({{}, {"older"}, {"newer"}, {"newer", "older"}}));
    disk.syncNames();
    const QTemporaryDir image;
    disk.writeAfterPowerLoss(image.path().toStdString());
    QCOMPARE(QDir(image.path()).entryList(QDir::Files), QStringList("newer"));
  }

  void theDiskCanStartWithOlderContentsThanTheVisibleFiles() {
    const QTemporaryDir home;
    const QTemporaryDir image;
    QFile seen(home.filePath(QStringLiteral("file")));
    QVERIFY(seen.open(QIODevice::WriteOnly));
    seen.write("seen");
    seen.close();
    QVERIFY(seen.copy(image.filePath(QStringLiteral("file"))));
    QVERIFY(seen.open(QIODevice::Append));
    seen.write(" and more");
    seen.close();
    DiskModel disk(1);
    disk.startFrom(image.path().toStdString(), home.path().toStdString());
    const DiskModel::Path file = seen.fileName().toStdString();
    disk.open(file);
    disk.syncFile(file);
    const QTemporaryDir left;
    disk.writeCertain(left.path().toStdString());
    QFile written(left.filePath(QStringLiteral("file")));
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll(), "seen");
  }
};

CARTONPICK_TEST(FaultyVfsTest);
#include "FaultyVfs_test.moc"
