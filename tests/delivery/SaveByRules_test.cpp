#include "delivery/SaveByRules.h"

#include "store/TemporaryStore.h"
#include "support/FullDisk.h"
#include "support/RuleSets.h"
#include "support/TestClass.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

namespace {

constexpr auto kSaveOnFullDisk = "--save-on-full-disk";

Picking pickOf(const QString &item) {
  return {.doc = QStringLiteral("4711"), .item = item};
}

/// Saves in the store at the given path on a full disk under the standard rules. Runs in another
/// process, which this ends.
int saveOnFullDisk(const QStringList &arguments) {
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
  ManagedObjectContext context(openStore(arguments.at(0)));
  context.insert(pickOf(QStringLiteral("saved")));
  saveByRules(context, PickingRules::standard());
  const FullDisk disk;
  context.insert(pickOf(QStringLiteral("unsaved")));
  saveByRules(context, PickingRules::standard());
  return EXIT_SUCCESS;
}

}  // namespace

class SaveByRulesTest : public QObject {
  Q_OBJECT

 private slots:
  void changesAreSaved_data() { addRuleSets(); }
  void changesAreSaved() {
    QFETCH(bool, isCareful);
    const TemporaryStore store;
    ManagedObjectContext context(store.open());
    context.insert(pickOf(QStringLiteral("A")));
    QVERIFY(saveByRules(context, rulesOf(isCareful)));
    QVERIFY(!context.hasChanges());
    QCOMPARE(store.valueOf("SELECT item FROM Picking"), "A");
  }

  void underTheStandardRulesAFailedSaveEndsTheProcess() {
    const TemporaryStore store;
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {kSaveOnFullDisk, store.path()});
    process.waitForFinished();
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    QVERIFY(process.readAllStandardError().contains("Unresolved error "));
    QCOMPARE(store.valueOf("SELECT group_concat(item) FROM Picking"), "saved");
  }

  void underTheCarefulRulesAFailedSaveIsTakenBackAndTheNextOneWorks() {
    const TemporaryStore store;
    ManagedObjectContext context(store.open());
    context.insert(pickOf(QStringLiteral("A")));
    QVERIFY(saveByRules(context, PickingRules::careful()));
    {
      const FullDisk disk;
      QTest::ignoreMessage(QtWarningMsg,
                           "Not saved: disk I/O error, {code = 10; extended code = 778}");
      context.insert(pickOf(QStringLiteral("B")));
      QVERIFY(!saveByRules(context, PickingRules::careful()));
    }
    QVERIFY(!context.hasChanges());
    QCOMPARE(context.errorString(), "disk I/O error");
    QCOMPARE(context.pickings(QStringLiteral("4711"))->size(), 1U);
    context.insert(pickOf(QStringLiteral("C")));
    QVERIFY(saveByRules(context, PickingRules::careful()));
    QCOMPARE(store.valueOf("SELECT group_concat(item) FROM Picking"), "A,C");
  }
};

CARTONPICK_TEST(SaveByRulesTest);
CARTONPICK_TEST_CHILD(kSaveOnFullDisk, saveOnFullDisk);
#include "SaveByRules_test.moc"
