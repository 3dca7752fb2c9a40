#include "store/WriteAheadLog.h"

#include "TemporaryStore.h"
#include "disk/FaultyVfs.h"
#include "support/TestClass.h"

#include <QTest>

#include <SQLiteCpp/Exception.h>
#include <filesystem>

namespace {

const QString kDoc = QStringLiteral("4711");

std::filesystem::path pathOf(const QString &name) {
  return name.toStdString();
}

/// A store left behind by a crashed program: its last save is only in the write-ahead log. `seen`
/// includes the log; `disk` is the same store without the log, which never reached the disk.
struct LeftStore {
  LeftStore() {
    const TemporaryStore running;
    {
      const auto coordinator = running.open();
      ManagedObjectContext context(coordinator);
      context.insert(Picking{.doc = kDoc, .item = QStringLiteral("A")});
      QVERIFY(!context.save());
      for (const QString &end : {QString(), QStringLiteral("-wal")}) {
        QVERIFY(QFile::copy(running.path() + end, seen.path() + end));
      }
    }
    QVERIFY(QFile::copy(seen.path(), disk.path()));
  }

  TemporaryStore seen;
  TemporaryStore disk;
};

QString folderOf(const TemporaryStore &store) {
  return QFileInfo(store.path()).path();
}

}  // namespace

class WriteAheadLogTest : public QObject {
  Q_OBJECT

 private slots:
  void dataReadFromAnOpenStoreIsOnDisk() {
    const LeftStore left;
    DiskModel disk(1);
    disk.startFrom(pathOf(folderOf(left.disk)),
                   std::filesystem::canonical(pathOf(folderOf(left.seen))));
    const TemporaryStore certain;
    {
      FaultyVfs vfs;
      vfs.setDisk(&disk);
      const auto coordinator = left.seen.open();
      QCOMPARE(ManagedObjectContext(coordinator).pickings(kDoc)->size(), 1U);
      disk.writeCertain(pathOf(folderOf(certain)));
    }
    QCOMPARE(certain.valueOf("SELECT group_concat(item) FROM Picking"), "A");
    QCOMPARE(certain.valueOf("PRAGMA integrity_check"), "ok");
  }

  void openingDoesNotChangeTheLog() {
    const LeftStore left;
    const QString path = left.seen.path() + QStringLiteral("-wal");
    const auto bytes = [&] {
      QFile log(path);
      return log.open(QIODevice::ReadOnly) ? log.readAll() : QByteArray();
    };
    const QByteArray before = bytes();
    QVERIFY(!before.isEmpty());
    const auto coordinator = left.seen.open();
    QVERIFY(coordinator->hasStore());
    QCOMPARE(bytes(), before);
  }

  void aStoreWithoutALogIsNotWritten() {
    const TemporaryStore store;
    SQLite::Database database = store.connect();
    bringLogToDisk(database);
    QVERIFY(store.bytes().isEmpty());
  }

  void aStoreWhoseLogCannotBeSyncedIsNotOpened() {
    const LeftStore left;
    FaultyVfs vfs;
    vfs.setObserver([&](std::int64_t number, FaultyVfs::Operation operation) {
      if (operation == FaultyVfs::Operation::Sync) {
        vfs.failAt(number, FaultyVfs::Fault::ForGood);
      }
    });
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(QStringLiteral("Store %1 not opened: The log cannot be "
                                                   "synced to disk")
                                        .arg(left.seen.path())));
    QVERIFY(!left.seen.open()->hasStore());
  }
};

CARTONPICK_TEST(WriteAheadLogTest);
#include "WriteAheadLog_test.moc"
