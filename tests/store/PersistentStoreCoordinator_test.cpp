#include "store/PersistentStoreCoordinator.h"

#include "TemporaryStore.h"
#include "support/TestClass.h"

#include <QRegularExpression>
#include <QTest>

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <utility>

namespace {

using Migration = PersistentStoreCoordinator::Migration;

constexpr const char *kNewerVersion = "PRAGMA user_version = 1000";

bool isPrivate(const QString &path) {
  constexpr auto kOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                           QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
  return QFile::exists(path) && !(QFile::permissions(path) & kOthers);
}

/// Creates a file of an older model: no Items, no indexes, picks without description and sent flag.
void createOlderStore(const TemporaryStore &store) {
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
  void aMissingFileIsCreated() {
    const TemporaryStore store;
    const auto coordinator = store.open();
    QVERIFY(coordinator->hasStore());
    QVERIFY(coordinator->database() != nullptr);
    for (const char *entity : {"Picking", "Orders", "Items"}) {
      QVERIFY2(coordinator->database()->tableExists(entity), entity);
    }
    QCOMPARE(store.valueOf("PRAGMA user_version"), "1");
  }

  void theFilesAreAccessibleToTheirOwnerOnly() {
    const TemporaryStore store;
    const auto coordinator = store.open();
    coordinator->database()->exec("INSERT INTO Items (item) VALUES ('A')");
    QVERIFY(isPrivate(store.path()));
    QVERIFY(isPrivate(store.path() + QStringLiteral("-wal")));
    QVERIFY(isPrivate(store.path() + QStringLiteral("-shm")));
  }

  void theOwnerHasAccessToANewFileWithAnyUmask() {
    const TemporaryStore store;
    constexpr mode_t kReadOnly = 0277;
    const mode_t before = umask(kReadOnly);
    const bool isOpen = store.open()->hasStore();
    umask(before);
    QVERIFY(isOpen);
    constexpr auto kOwner = QFile::ReadOwner | QFile::WriteOwner;
    QCOMPARE(QFile::permissions(store.path()) & kOwner, kOwner);
  }

  void commitsAreSyncedToDisk() {
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

  void storedDataSurvivesReopening() {
    const TemporaryStore store;
    store.open()->database()->exec("INSERT INTO Items (item) VALUES ('A')");
    const auto coordinator = store.open();
    QVERIFY(coordinator->hasStore());
    QCOMPARE(coordinator->database()->execAndGet("SELECT item FROM Items").getString(), "A");
  }

  void aStoreInAMissingFolderIsNotOpened() {
    const QTemporaryDir folder;
    const auto coordinator = openStore(folder.filePath(QStringLiteral("missing/x.sqlite")));
    QVERIFY(!coordinator->hasStore());
    QCOMPARE(coordinator->database(), nullptr);
  }

  void withAnEmptyModelNoStoreIsOpenedAndNoFileIsCreated() {
    const TemporaryStore store;
    PersistentStoreCoordinator coordinator(
        std::make_shared<const ManagedObjectModel>(QStringLiteral(":/nothing.momd")));
    QVERIFY(!coordinator.addPersistentStore(store.path(), Migration::Automatic));
    QVERIFY(!QFile::exists(store.path()));
  }

  void aFileOfAnOlderModelIsNotOpenedWithoutMigration() {
    const TemporaryStore store;
    createOlderStore(store);
    const QByteArray before = store.bytes();
    QVERIFY(!store.open(Migration::Refuse)->hasStore());
    QCOMPARE(store.bytes(), before);
  }

  void aMigrationAddsWhatIsMissingAndLosesNothing() {
    const TemporaryStore store;
    createOlderStore(store);
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

  void aMigratedFileHasTheSameIndexesAsANewOne() {
    constexpr auto kIndexes =
        "SELECT group_concat(sql) FROM (SELECT sql FROM sqlite_master WHERE type = 'index' "
        "ORDER BY name)";
    const TemporaryStore older;
    createOlderStore(older);
    QVERIFY(older.open(Migration::Automatic)->hasStore());
    const TemporaryStore fresh;
    QVERIFY(fresh.open()->hasStore());
    QVERIFY(!fresh.valueOf(kIndexes).isEmpty());
    QCOMPARE(older.valueOf(kIndexes), fresh.valueOf(kIndexes));
  }

  void aMigratedFileNeedsNoFurtherMigration() {
    const TemporaryStore store;
    createOlderStore(store);
    QVERIFY(store.open(Migration::Automatic)->hasStore());
    QVERIFY(store.open(Migration::Refuse)->hasStore());
  }

  void aMigrationThatFailsMidwayChangesNothing() {
    const TemporaryStore store;
    createOlderStore(store);
    // Columns cannot be added to a view.
    store.connect().exec("CREATE VIEW Orders AS SELECT doc FROM Picking");
    const QString before = store.valueOf("SELECT group_concat(sql) FROM sqlite_master");
    QVERIFY(!store.open(Migration::Automatic)->hasStore());
    QCOMPARE(store.valueOf("SELECT group_concat(sql) FROM sqlite_master"), before);
    QCOMPARE(store.valueOf("PRAGMA user_version"), "0");
  }

  void aFileOfANewerModelIsNeverWritten() {
    const TemporaryStore store;
    createOlderStore(store);
    store.connect().exec(kNewerVersion);
    const QByteArray before = store.bytes();
    QVERIFY(!store.open(Migration::Refuse)->hasStore());
    QVERIFY(!store.open(Migration::Automatic)->hasStore());
    QCOMPARE(store.bytes(), before);
  }

  void theWriteAheadLogOfANewerModelIsNotTouched() {
    const TemporaryStore store;
    const TemporaryStore crashed;
    {
      SQLite::Database database = store.connect();
      database.exec("PRAGMA journal_mode = WAL");
      database.exec(kNewerVersion);
      database.exec("CREATE TABLE Novelties (text TEXT)");
      // The files that a program leaves behind if it crashes before a checkpoint.
      QVERIFY(QFile::copy(store.path(), crashed.path()));
      QVERIFY(QFile::copy(store.path() + QStringLiteral("-wal"),
                          crashed.path() + QStringLiteral("-wal")));
    }
    const QByteArray before = crashed.bytes();
    QVERIFY(!crashed.open(Migration::Automatic)->hasStore());
    QCOMPARE(crashed.bytes(), before);
    QVERIFY(crashed.connect().tableExists("Novelties"));
  }

  void aFileThatIsNotADatabaseIsNotTouched() {
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

  void openingCanSucceedOnTheSecondAttempt() {
    const TemporaryStore store;
    createOlderStore(store);
    PersistentStoreCoordinator coordinator(
        std::make_shared<const ManagedObjectModel>(ManagedObjectModel::bundledUrl()));
    QVERIFY(!coordinator.addPersistentStore(store.path(), Migration::Refuse));
    QVERIFY(!coordinator.hasStore());
    QVERIFY(coordinator.addPersistentStore(store.path(), Migration::Automatic));
    QVERIFY(coordinator.hasStore());
  }

  void aDamagedFileIsRefused_data() {
    QTest::addColumn<QByteArray>("sql");
    QTest::newRow("two tables that share a page") << QByteArray(
        "UPDATE sqlite_master SET rootpage = (SELECT rootpage FROM sqlite_master WHERE name = "
        "'Items') WHERE name = 'Picking'");
    QTest::newRow("a table beyond the end")
        << QByteArray("UPDATE sqlite_master SET rootpage = 4711 WHERE name = 'Picking'");
  }

  void aDamagedFileIsRefused() {
    QFETCH(const QByteArray, sql);
    const TemporaryStore store;
    QVERIFY(store.open()->hasStore());
    {
      SQLite::Database database = store.connect();
      database.exec("PRAGMA writable_schema = ON");
      database.exec(sql.toStdString());
    }
    const QByteArray before = store.bytes();
    const QString oneLine = QStringLiteral("^[^\n]*(damaged|malformed)[^\n]*$");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(oneLine));
    QVERIFY(!store.open(Migration::Automatic)->hasStore());
    QCOMPARE(store.bytes(), before);
  }

  void aFileWithAnInvalidTextEncodingIsRefused() {
    constexpr int kEncodingOffset = 56;
    const TemporaryStore store;
    QVERIFY(store.open()->hasStore());
    {
      QFile file(store.path());
      QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(kEncodingOffset));
      QCOMPARE(file.write("\1\0\0\0", 4), 4);
    }
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("damaged: its text encoding")));
    QVERIFY(!store.open(Migration::Automatic)->hasStore());
  }

  void codeInTheFileDoesNotRun_data() {
    QTest::addColumn<QByteArray>("sql");
    QTest::addColumn<bool>("isReadable");
    QTest::newRow("a trigger")
        << QByteArray("CREATE TRIGGER t AFTER INSERT ON Picking BEGIN DELETE FROM Picking; END")
        << true;
    QTest::newRow("a view")
        << QByteArray(
               "DROP TABLE Picking; CREATE VIEW Picking AS WITH RECURSIVE c(x) AS (SELECT 1 UNION "
               "ALL "
               "SELECT x + 1 FROM c) SELECT '' AS barcode, '' AS box, 0 AS datepicked, '' AS "
               "descr, "
               "'4711' AS doc, '' AS item, '' AS ordernum, 0 AS orderqty, 0 AS pickqty, 0 AS sent, "
               "x AS rowid FROM c; CREATE TRIGGER t INSTEAD OF INSERT ON Picking BEGIN SELECT 1; "
               "END")
        << false;
    QTest::newRow("a virtual table") << QByteArray(
                                            "DROP TABLE Picking; CREATE VIRTUAL TABLE Picking "
                                            "USING fts5(barcode, box, datepicked, "
                                            "descr, doc, item, ordernum, orderqty, pickqty, sent)")
                                     << false;
  }

  void codeInTheFileDoesNotRun() {
    QFETCH(const QByteArray, sql);
    QFETCH(const bool, isReadable);
    const TemporaryStore store;
    QVERIFY(store.open()->hasStore());
    store.connect().exec(sql.toStdString());
    ManagedObjectContext context(store.open());
    QCOMPARE(context.pickings(QStringLiteral("4711")).has_value(), isReadable);
    context.insert(Picking{.doc = QStringLiteral("4711")});
    QCOMPARE(!context.save(), isReadable);
    QCOMPARE(context.pickings(QStringLiteral("4711")).value_or(std::vector<Picking>()).size(),
             isReadable ? 1U : 0U);
  }

  void anUntrustedFunctionDoesNotRunFromTheSchema() {
    const TemporaryStore store;
    const auto coordinator = store.open();
    bool hasRun = false;
    const auto addFunction = [&](SQLite::Database &database) {
      database.createFunction("run", 0, true, &hasRun,
                              [](sqlite3_context *context, int, sqlite3_value **) {
                                *static_cast<bool *>(sqlite3_user_data(context)) = true;
                                sqlite3_result_int(context, 1);
                              });
    };
    addFunction(*coordinator->database());
    SQLite::Database other = store.connect();
    addFunction(other);
    other.exec("CREATE TABLE Trap (text TEXT CHECK (run()))");
    other.exec("INSERT INTO Trap VALUES ('a')");
    QVERIFY(std::exchange(hasRun, false));
    QVERIFY_THROWS_EXCEPTION(SQLite::Exception,
                             coordinator->database()->exec("INSERT INTO Trap VALUES ('a')"));
    QVERIFY(!hasRun);
  }

  void theSchemaOfAnOpenStoreCannotBeWritten() {
    const TemporaryStore store;
    const auto coordinator = store.open();
    coordinator->database()->exec("PRAGMA writable_schema = ON");
    QVERIFY_THROWS_EXCEPTION(
        SQLite::Exception,
        coordinator->database()->exec("UPDATE sqlite_master SET sql = '' WHERE name = 'Items'"));
  }

  void aViewInTheFileCannotBeRead() {
    const TemporaryStore store;
    const auto coordinator = store.open();
    store.connect().exec("CREATE VIEW Trap AS SELECT 1");
    QVERIFY_THROWS_EXCEPTION(SQLite::Exception,
                             coordinator->database()->execAndGet("SELECT * FROM Trap"));
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

CARTONPICK_TEST(PersistentStoreCoordinatorTest);
#include "PersistentStoreCoordinator_test.moc"
