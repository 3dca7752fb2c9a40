#include "app/vekAppDelegate.h"

#include "app/startViewController.h"
#include "store/ManagedObjectContext.h"
#include "store/ManagedObjectModel.h"
#include "store/PersistentStoreCoordinator.h"
#include "support/TestClass.h"
#include "support/TestEnvironment.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <SQLiteCpp/Database.h>

namespace {

/// An app delegate that has not been launched.
struct TestDelegate : TestEnvironment {
  vekAppDelegate delegate{environment};

  /// Opens a second connection to the store file; creates the file if it is missing.
  [[nodiscard]] SQLite::Database connect() const {
    return {storePath().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE};
  }
};

}  // namespace

class vekAppDelegateTest : public QObject {
  Q_OBJECT

 private slots:
  void nothingIsCreatedBeforeItIsNeeded() {
    TestDelegate test;
    QVERIFY(!QFile::exists(test.storePath()));
    QCOMPARE(test.delegate.window(), nullptr);
    test.delegate.managedObjectModel();
    QVERIFY(!QFile::exists(test.storePath()));
  }

  void readingTheContextCreatesTheStore() {
    TestDelegate test;
    QVERIFY(test.delegate.managedObjectContext() != nullptr);
    QVERIFY(QFile::exists(test.storePath()));
    QVERIFY(test.delegate.persistentStoreCoordinator()->hasStore());
    QCOMPARE(test.delegate.managedObjectContext()->storePath(), test.storePath());
  }

  void everyReadReturnsTheSameObject() {
    TestDelegate test;
    QCOMPARE(test.delegate.managedObjectModel(), test.delegate.managedObjectModel());
    QCOMPARE(test.delegate.persistentStoreCoordinator(),
             test.delegate.persistentStoreCoordinator());
    QCOMPARE(test.delegate.managedObjectContext(), test.delegate.managedObjectContext());
  }

  void theModelIsTheBundledModel() {
    TestDelegate test;
    QCOMPARE(test.delegate.managedObjectModel()->entities().size(), 3U);
  }

  void theDocumentsFolderIsInTheHome() {
    TestDelegate test;
    QCOMPARE(test.delegate.applicationDocumentsDirectory(),
             QUrl::fromLocalFile(test.environment.folders.documents()));
  }

  void aStoreOfAnOlderModelIsMigrated() {
    TestDelegate test;
    test.connect().exec(
        "CREATE TABLE Picking (doc TEXT, box TEXT, item TEXT, pickqty INTEGER);"
        "INSERT INTO Picking VALUES ('4711', 'C1', 'A', 3)");
    const auto picks = test.delegate.managedObjectContext()->pickings(QStringLiteral("4711"));
    QVERIFY(picks.has_value());
    QCOMPARE(picks->front().pickqty, 3);
  }

  void aStoreOfAnOlderModelIsFirstOpenedWithoutMigration() {
    TestDelegate test;
    test.connect().exec("CREATE TABLE Picking (doc TEXT)");
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(QStringLiteral("not opened: .* older model version 0$")));
    QVERIFY(test.delegate.persistentStoreCoordinator()->hasStore());
  }

  void aStoreThatCannotBeOpenedLeavesACoordinatorWithoutAStore() {
    TestDelegate test;
    test.connect().exec("CREATE TABLE Picking (doc TEXT); PRAGMA user_version = 1000");
    QVERIFY(!test.delegate.persistentStoreCoordinator()->hasStore());
    QVERIFY(test.delegate.managedObjectContext() != nullptr);
    QVERIFY(!test.delegate.managedObjectContext()->pickings(QStringLiteral("4711")));
  }

  void openingAStoreIsNotRetriedAfterAFailure() {
    TestDelegate test;
    test.connect().exec("PRAGMA user_version = 1000");
    QVERIFY(!test.delegate.persistentStoreCoordinator()->hasStore());
    QVERIFY(QFile::remove(test.storePath()));
    QVERIFY(!test.delegate.persistentStoreCoordinator()->hasStore());
  }

  void savingWithoutAContextCreatesNothing() {
    TestDelegate test;
    test.delegate.saveContext();
    QVERIFY(!QFile::exists(test.storePath()));
  }

  void savingTheContextSavesItsChanges() {
    TestDelegate test;
    test.delegate.managedObjectContext()->insert(Picking{.doc = QStringLiteral("4711")});
    test.delegate.saveContext();
    QVERIFY(!test.delegate.managedObjectContext()->hasChanges());
    QCOMPARE(test.connect().execAndGet("SELECT doc FROM Picking").getString(), "4711");
  }

  void launchingShowsTheStartScreenAndPassesItTheContext() {
    TestDelegate test;
    QVERIFY(test.delegate.didFinishLaunchingWithOptions());
    auto *start = qobject_cast<startViewController *>(test.delegate.window()->rootViewController());
    QVERIFY(start != nullptr);
    QVERIFY(start->managedObjectContext() != nullptr);
    QCOMPARE(start->managedObjectContext(), test.delegate.managedObjectContext());
    QCOMPARE(test.delegate.window()->statusBarStyle(), Window::StatusBarStyle::LightContent);
    QCOMPARE(test.delegate.window()->alerts(), &test.environment.alerts);
    QCOMPARE(test.delegate.window()->busy(), &test.environment.busy);
  }

  void launchingWithoutAStoreShowsNoAlert() {
    TestDelegate test;
    test.connect().exec("PRAGMA user_version = 1000");
    QVERIFY(test.delegate.didFinishLaunchingWithOptions());
    QCOMPARE(test.environment.alerts.count(), 0);
  }

  void anyUrlIsAcceptedAndIgnored() {
    TestDelegate test;
    for (const char *address : {"cartonpick://delivery/4711", "file:///etc/hosts", ""}) {
      QVERIFY(test.delegate.openURL(QUrl(QString::fromLatin1(address))));
      QVERIFY(test.delegate.handleOpenURL(QUrl(QString::fromLatin1(address))));
    }
    QVERIFY(!QFile::exists(test.storePath()));
  }

  void lifecycleEventsSaveNothing() {
    TestDelegate test;
    ManagedObjectContext &context = *test.delegate.managedObjectContext();
    context.insert(Picking{.doc = QStringLiteral("4711")});
    test.delegate.willResignActive();
    test.delegate.didEnterBackground();
    test.delegate.willEnterForeground();
    test.delegate.didBecomeActive();
    test.delegate.willTerminate();
    QVERIFY(context.hasChanges());
    QCOMPARE(test.connect().execAndGet("SELECT count(*) FROM Picking").getInt(), 0);
  }
};

CARTONPICK_TEST(vekAppDelegateTest);
#include "vekAppDelegate_test.moc"
