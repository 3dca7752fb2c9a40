#include "app/store/PersistentStoreCoordinator.h"

#include "TemporaryStore.h"

#include <QTest>

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

namespace {

using Migration = PersistentStoreCoordinator::Migration;

constexpr const char *kNewerVersion = "PRAGMA user_version = 1000";

bool isOwnersAlone(const QString &path) {
  constexpr auto kOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                           QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
  return QFile::exists(path) && !(QFile::permissions(path) & kOthers);
}

/// A file of an older model: no Items, no indexes, and picks without description and sent flag.
void makeOlderStore(const TemporaryStore &store) {
  SQLite::Database database = store.connect();
  database.exec(
      "CREATE TABLE Picking (doc TEXT, box TEXT, item TEXT, barcode TEXT, ordernum TEXT, "
      "orderqty INTEGER, pickqty INTEGER, datepicked INTEGER, remark TEXT)");
  database.exec("CREATE TABLE Notes (text TEXT)");
  database.exec("INSERT INTO Notes VALUES ('kept')");
  database.exec(
      "INSERT INTO Picking VALUES ('4711', 'C1', 'A', 'bA', 'A1', 5, 3, 1700000000000, 'kept')");
}

}  // namespace

class PersistentStoreCoordinatorTest : public QObject {
  Q_OBJECT

 private slots:
  void aMissingFileIsMade() {
    const TemporaryStore store;
    const auto coordinator = store.open();
    QVERIFY(coordinator->hasStore());
    QVERIFY(coordinator->database() != nullptr);
    for (const char *entity : {"Picking", "Orders", "Items"}) {
      QVERIFY2(coordinator->database()->tableExists(entity), entity);
    }
    QCOMPARE(store.valueOf("PRAGMA user_version"), "1");
  }

  void theFilesAreTheirOwnersAlone() {
    const TemporaryStore store;
    const auto coordinator = store.open();
    coordinator->database()->exec("INSERT INTO Items (item) VALUES ('A')");
    QVERIFY(isOwnersAlone(store.path()));
    QVERIFY(isOwnersAlone(store.path() + QStringLiteral("-wal")));
    QVERIFY(isOwnersAlone(store.path() + QStringLiteral("-shm")));
  }

  void whatIsCommittedIsOnDisk() {
    const TemporaryStore store;
    const auto coordinator = store.open();
    constexpr int kFull = 2;
    QCOMPARE(coordinator->database()->execAndGet("PRAGMA synchronous").getInt(), kFull);
    QCOMPARE(coordinator->database()->execAndGet("PRAGMA journal_mode").getString(), "wal");
  }

  void anEmptyFileBecomesAStore() {
    const TemporaryStore store;
    QFile file(store.path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(store.open()->hasStore());
  }

  void aStoreSurvivesReopening() {
    const TemporaryStore store;
    store.open()->database()->exec("INSERT INTO Items (item) VALUES ('A')");
    const auto coordinator = store.open();
    QVERIFY(coordinator->hasStore());
    QCOMPARE(coordinator->database()->execAndGet("SELECT item FROM Items").getString(), "A");
  }

  void aFolderThatIsMissingGivesNoStore() {
    const QTemporaryDir folder;
    const auto coordinator = openStore(folder.filePath(QStringLiteral("missing/x.sqlite")));
    QVERIFY(!coordinator->hasStore());
    QCOMPARE(coordinator->database(), nullptr);
  }

  void aModelOfNothingGivesNoStoreAndMakesNoFile() {
    const TemporaryStore store;
    PersistentStoreCoordinator coordinator(
        std::make_shared<const ManagedObjectModel>(QStringLiteral(":/nothing.momd")));
    QVERIFY(!coordinator.addPersistentStore(store.path(), Migration::Automatic));
    QVERIFY(!QFile::exists(store.path()));
  }

  void aFileOfAnOlderModelIsNotOpenedAsItIs() {
    const TemporaryStore store;
    makeOlderStore(store);
    const QByteArray before = store.bytes();
    QVERIFY(!store.open(Migration::Refuse)->hasStore());
    QCOMPARE(store.bytes(), before);
  }

  void aFileOfAnOlderModelGainsWhatItLacksAndLosesNothing() {
    const TemporaryStore store;
    makeOlderStore(store);
    const auto coordinator = store.open(Migration::Automatic);
    QVERIFY(coordinator->hasStore());
    SQLite::Database &database = *coordinator->database();
    QCOMPARE(database.execAndGet("SELECT text FROM Notes").getString(), "kept");
    QCOMPARE(database.execAndGet("SELECT remark FROM Picking").getString(), "kept");
    QVERIFY(database.tableExists("Orders"));
    QVERIFY(database.tableExists("Items"));
    QCOMPARE(database.execAndGet("PRAGMA user_version").getInt(), 1);

    ManagedObjectContext context(coordinator);
    const auto picks = context.pickings(QStringLiteral("4711"));
    QVERIFY(picks.has_value());
    QCOMPARE(picks->size(), 1U);
    const Picking &pick = picks->front();
    QCOMPARE(pick.barcode, "bA");
    QCOMPARE(pick.pickqty, 3);
    QCOMPARE(pick.orderqty, 5);
    QCOMPARE(pick.datepicked.toMSecsSinceEpoch(), 1'700'000'000'000);
    QVERIFY(pick.descr.isNull());
    QCOMPARE(pick.sent, 0);
  }

  void aMigratedFileIsAsWellIndexedAsANewOne() {
    constexpr auto kIndexes =
        "SELECT group_concat(sql) FROM (SELECT sql FROM sqlite_master WHERE type = 'index' "
        "ORDER BY name)";
    const TemporaryStore older;
    makeOlderStore(older);
    QVERIFY(older.open(Migration::Automatic)->hasStore());
    const TemporaryStore fresh;
    QVERIFY(fresh.open()->hasStore());
    QVERIFY(!fresh.valueOf(kIndexes).isEmpty());
    QCOMPARE(older.valueOf(kIndexes), fresh.valueOf(kIndexes));
  }

  void aMigratedFileIsOpenedAsItIsFromThenOn() {
    const TemporaryStore store;
    makeOlderStore(store);
    QVERIFY(store.open(Migration::Automatic)->hasStore());
    QVERIFY(store.open(Migration::Refuse)->hasStore());
  }

  void aMigrationThatFailsHalfwayChangesNothing() {
    const TemporaryStore store;
    makeOlderStore(store);
    // A view cannot gain the columns that it lacks.
    store.connect().exec("CREATE VIEW Orders AS SELECT doc FROM Picking");
    const QString before = store.valueOf("SELECT group_concat(sql) FROM sqlite_master");
    QVERIFY(!store.open(Migration::Automatic)->hasStore());
    QCOMPARE(store.valueOf("SELECT group_concat(sql) FROM sqlite_master"), before);
    QCOMPARE(store.valueOf("PRAGMA user_version"), "0");
  }

  void aFileOfANewerModelIsNeverWrittenTo() {
    const TemporaryStore store;
    makeOlderStore(store);
    store.connect().exec(kNewerVersion);
    const QByteArray before = store.bytes();
    QVERIFY(!store.open(Migration::Refuse)->hasStore());
    QVERIFY(!store.open(Migration::Automatic)->hasStore());
    QCOMPARE(store.bytes(), before);
  }

  void theLogOfANewerModelIsLeftToTheNewerProgram() {
    const TemporaryStore store;
    const TemporaryStore crashed;
    {
      SQLite::Database database = store.connect();
      database.exec("PRAGMA journal_mode = WAL");
      database.exec(kNewerVersion);
      database.exec("CREATE TABLE Novelties (text TEXT)");
      // What a program leaves that dies before the log has gone into the file.
      QVERIFY(QFile::copy(store.path(), crashed.path()));
      QVERIFY(QFile::copy(store.path() + QStringLiteral("-wal"),
                          crashed.path() + QStringLiteral("-wal")));
    }
    const QByteArray before = crashed.bytes();
    QVERIFY(!crashed.open(Migration::Automatic)->hasStore());
    QCOMPARE(crashed.bytes(), before);
    QVERIFY(crashed.connect().tableExists("Novelties"));
  }

  void aFileThatIsNoDatabaseIsLeftAlone() {
    const TemporaryStore store;
    QFile file(store.path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("A letter, not a database.\n").repeated(1000));
    file.close();
    const QByteArray before = store.bytes();
    QVERIFY(!store.open(Migration::Refuse)->hasStore());
    QVERIFY(!store.open(Migration::Automatic)->hasStore());
    QCOMPARE(store.bytes(), before);
  }

  void aSecondAttemptMaySucceed() {
    const TemporaryStore store;
    makeOlderStore(store);
    PersistentStoreCoordinator coordinator(
        std::make_shared<const ManagedObjectModel>(ManagedObjectModel::bundledUrl()));
    QVERIFY(!coordinator.addPersistentStore(store.path(), Migration::Refuse));
    QVERIFY(!coordinator.hasStore());
    QVERIFY(coordinator.addPersistentStore(store.path(), Migration::Automatic));
    QVERIFY(coordinator.hasStore());
  }

  void aSecondConnectionIsAsDurableAsTheFirst() {
    const TemporaryStore store;
    const auto coordinator = store.open();
    const auto second = PersistentStoreCoordinator::connectTo(store.path());
    constexpr int kFull = 2;
    QCOMPARE(second->execAndGet("PRAGMA synchronous").getInt(), kFull);
    QCOMPARE(second->execAndGet("PRAGMA journal_mode").getString(), "wal");
  }
};

QTEST_GUILESS_MAIN(PersistentStoreCoordinatorTest)
#include "PersistentStoreCoordinator_test.moc"
