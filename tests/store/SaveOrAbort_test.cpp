#include "store/SaveOrAbort.h"

#include "TemporaryStore.h"
#include "support/TestClass.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

namespace {

const QString kDoc = QStringLiteral("4711");
constexpr auto kSavePick = "--save-pick";

/// The scenarios of a save in another process.
const QString kWhileLocked = QStringLiteral("while-locked");
const QString kWithoutFileGrowth = QStringLiteral("without-file-growth");
const QString kWithoutStore = QStringLiteral("without-store");
const QString kWithoutChanges = QStringLiteral("without-changes");

Picking pickOf(const QString &item) {
  return {.doc = kDoc, .item = item};
}

void forbidFileGrowth() {
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit none{0, 0};
  setrlimit(RLIMIT_FSIZE, &none);
}

/// Runs in the other process: saves once successfully, then once in the given scenario.
int savePick(const QStringList &arguments) {
  const QString &scenario = arguments.at(0);
  const QString &path = arguments.at(1);
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
  const auto coordinator = openStore(path);
  ManagedObjectContext context(coordinator);
  if (scenario != kWithoutStore) {
    context.insert(pickOf(QStringLiteral("saved")));
    saveOrAbort(context);
  }
  SQLite::Database other(":memory:");
  if (scenario == kWhileLocked) {
    coordinator->database()->setBusyTimeout(0);
    other = SQLite::Database(path.toStdString(), SQLite::OPEN_READWRITE);
    other.exec("BEGIN IMMEDIATE");
  } else if (scenario != kWithoutStore) {
    forbidFileGrowth();
  }
  if (scenario != kWithoutChanges) {
    context.insert(pickOf(QStringLiteral("unsaved")));
  }
  saveOrAbort(context);
  return EXIT_SUCCESS;
}

/// Runs another process that saves picks in `path`, and waits until it ends.
struct OtherProcess {
  OtherProcess(const QString &scenario, const QString &path) {
    process.start(QCoreApplication::applicationFilePath(), {kSavePick, scenario, path});
    process.waitForFinished();
  }

  QProcess process;
};

}  // namespace

class SaveOrAbortTest : public QObject {
  Q_OBJECT

 private slots:
  void changesAreSaved() {
    const TemporaryStore store;
    ManagedObjectContext context(store.open());
    context.insert(pickOf(QStringLiteral("A")));
    saveOrAbort(context);
    QVERIFY(!context.hasChanges());
    QCOMPARE(store.valueOf("SELECT item FROM Picking"), "A");
  }

  void aFailedSaveIsLoggedAndEndsTheProcess_data() {
    QTest::addColumn<QString>("scenario");
    QTest::addColumn<QByteArray>("lastLine");
    QTest::newRow("locked") << kWhileLocked
                            << QByteArray(
                                   "Unresolved error database is locked, "
                                   "{code = 5; extended code = 5}");
    QTest::newRow("file cannot grow") << kWithoutFileGrowth
                                      << QByteArray(
                                             "Unresolved error disk I/O error, "
                                             "{code = 10; extended code = 778}");
    QTest::newRow("no store") << kWithoutStore
                              << QByteArray("Unresolved error There is no store., {}");
  }
  void aFailedSaveIsLoggedAndEndsTheProcess() {
    QFETCH(const QString, scenario);
    QFETCH(const QByteArray, lastLine);
    const QTemporaryDir folder;
    const QString path = scenario == kWithoutStore
                             ? folder.filePath(QStringLiteral("missing/x.sqlite"))
                             : folder.filePath(QStringLiteral("x.sqlite"));
    OtherProcess other(scenario, path);
    QCOMPARE(other.process.exitStatus(), QProcess::CrashExit);
    QCOMPARE(other.process.exitCode(), SIGABRT);
    QCOMPARE(other.process.readAllStandardError().trimmed().split('\n').last(), lastLine);
    QCOMPARE(other.process.readAllStandardOutput(), "");
  }

  void earlierSavesSurviveAFailedSave() {
    const TemporaryStore store;
    const OtherProcess other(kWithoutFileGrowth, store.path());
    QCOMPARE(other.process.exitStatus(), QProcess::CrashExit);
    ManagedObjectContext context(store.open());
    const auto picks = context.pickings(kDoc);
    QCOMPARE(picks->size(), 1U);
    QCOMPARE(picks->front().item, "saved");
  }

  void aSaveWithoutChangesWritesNothingAndSucceeds() {
    const TemporaryStore store;
    OtherProcess other(kWithoutChanges, store.path());
    QCOMPARE(other.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(other.process.exitCode(), EXIT_SUCCESS);
    QCOMPARE(other.process.readAllStandardError(), "");
  }
};

CARTONPICK_TEST(SaveOrAbortTest);
CARTONPICK_TEST_CHILD(kSavePick, savePick);
#include "SaveOrAbort_test.moc"
