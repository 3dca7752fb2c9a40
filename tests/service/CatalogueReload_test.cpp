#include "service/CatalogueReload.h"

#include "device/NetworkHttpClient.h"
#include "store/ManagedObjectModel.h"
#include "store/PersistentStoreCoordinator.h"
#include "support/FullDisk.h"
#include "support/StoredArticles.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <SQLiteCpp/Database.h>
#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

constexpr auto kReloadOption = "--reload";
constexpr int kLargeCount = 300000;
/// The longest time in milliseconds that a test waits for a condition.
constexpr int kTimeout = 60000;

QByteArray catalogueOf(int count) {
  QByteArray body = "[";
  for (int i = 0; i < count; ++i) {
    body += QByteArray(R"({"item":"N%","barcode":"29%","descr":"Article"},)")
                .replace('%', QByteArray::number(i));
  }
  body.back() = ']';
  return body;
}

const QByteArray kOldCatalogue =
    R"([{"item":"A","barcode":"b1","descr":"One"},{"item":"B","barcode":"b2","descr":"Two"}])";

/// A progress report of the busy state.
struct BusyText {
  QString text;
  double progress;
};

/// A reload that records its progress and its result.
class WatchedReload {
 public:
  explicit WatchedReload(TestProgram &program) : WatchedReload(program, program.context()) {}
  WatchedReload(TestProgram &program, ManagedObjectContext &context)
      : reload(program.environment, context) {
    BusyState &busy = program.environment.busy;
    QObject::connect(&busy, &BusyState::changed, &reload, [this, &busy] {
      texts.push_back({busy.progressText(), busy.progress()});
    });
    QObject::connect(&reload, &CatalogueReload::finished, &reload,
                     [this](const std::optional<JsonResult> &answer) {
                       ++finishedCount;
                       result = answer;
                     });
  }

  void run() {
    reload.start();
    QVERIFY(QTest::qWaitFor([this] { return finishedCount == 1; }, kTimeout));
  }

  [[nodiscard]] bool showed(const QString &text, double progress) const {
    return std::any_of(texts.begin(), texts.end(), [&](const BusyText &entry) {
      return entry.text == text && qAbs(entry.progress - progress) < 1e-9;
    });
  }

  std::vector<BusyText> texts;
  int finishedCount = 0;
  std::optional<JsonResult> result;
  CatalogueReload reload;
};

/// Reloads the catalogue of `program` from `body`. Returns true if the reload succeeds.
bool reloads(TestProgram &program, const QByteArray &body) {
  program.service.answerWith(body);
  WatchedReload reload(program);
  reload.run();
  return reload.result.has_value();
}

void verifyOldCatalogue(TestProgram &program) {
  QCOMPARE(articleCount(program.storePath()), 2);
  QCOMPARE(program.context().itemsForCode("b1")->front().item, "A");
  QCOMPARE(program.context().itemsForCode("B")->front().descr, "Two");
}

std::unique_ptr<ManagedObjectContext> openStore(const QString &path) {
  auto coordinator = std::make_shared<PersistentStoreCoordinator>(
      std::make_shared<const ManagedObjectModel>(ManagedObjectModel::bundledUrl()));
  coordinator->addPersistentStore(path, PersistentStoreCoordinator::Migration::Refuse);
  return std::make_unique<ManagedObjectContext>(coordinator);
}

/// Loads the large catalogue into the store at the given path and prints the progress. Runs in a
/// process that a test kills.
int reloadAndPrint(const QStringList &arguments) {
  const QString &path = arguments.at(0);
  LoopbackService service;
  service.answerWith(catalogueOf(kLargeCount));
  Environment environment{.clock = nullptr,
                          .http = std::make_unique<NetworkHttpClient>(),
                          .sounds = nullptr,
                          .mail = nullptr,
                          .wakeLock = nullptr,
                          .display = nullptr,
                          .folders = {},
                          .serviceHost = service.host()};
  const auto context = openStore(path);
  CatalogueReload reload(environment, *context);
  QObject::connect(&environment.busy, &BusyState::changed, &reload, [&] {
    std::printf("%s\n", qUtf8Printable(environment.busy.progressText()));
    std::fflush(stdout);
  });
  QObject::connect(&reload, &CatalogueReload::finished, &reload, &QCoreApplication::quit,
                   Qt::QueuedConnection);
  reload.start();
  return QCoreApplication::exec();
}

}  // namespace

class CatalogueReloadTest : public QObject {
  Q_OBJECT

 private slots:
  void theCatalogueIsRequestedOnceAndStored() {
    TestProgram program;
    QVERIFY(reloads(program, kOldCatalogue));
    QCOMPARE(program.service.requests().size(), 1);
    QCOMPARE(program.service.requests().front().method, "GET");
    QCOMPARE(program.service.requests().front().target, "/qir_pick/servicepick.svc/json/getitems");
    QVERIFY(program.service.requests().front().body.isEmpty());
    verifyOldCatalogue(program);
  }

  void underTheCarefulRulesACatalogueThatCannotBeStoredIsReported() {
    TestProgram program(PickingRules::careful());
    QVERIFY(reloads(program, kOldCatalogue));
    program.service.answerWith(catalogueOf(1000));
    CatalogueReload reload(program.environment, program.context());
    QSignalSpy notStored(&reload, &CatalogueReload::notStored);
    QSignalSpy finished(&reload, &CatalogueReload::finished);
    {
      const FullDisk disk;
      reload.start();
      QTRY_COMPARE(notStored.count(), 1);
    }
    QCOMPARE(finished.count(), 0);
    QCOMPARE(notStored.at(0).at(0).toString(), "disk I/O error");
    QVERIFY(!program.environment.busy.isActive());
    verifyOldCatalogue(program);
  }

  void onlyTheNewArticlesRemain() {
    TestProgram program;
    QVERIFY(reloads(program, catalogueOf(1000)));
    QVERIFY(reloads(program, R"([{"item":"X"},{"item":"Y"},{"item":"Z"}])"));
    QCOMPARE(articleCount(program.storePath()), 3);
    QVERIFY(program.context().itemsForCode("N1")->empty());
  }

  void aRepeatedArticleIsStoredTwiceAndTheFirstIsFound() {
    TestProgram program;
    QVERIFY(reloads(program, R"([{"item":"A","descr":"first"},{"item":"A","descr":"second"}])"));
    QCOMPARE(articleCount(program.storePath()), 2);
    QCOMPARE(program.context().itemsForCode("A")->front().descr, "first");
  }

  void anEmptyArrayEmptiesTheCatalogue() {
    TestProgram program;
    QVERIFY(reloads(program, kOldCatalogue));
    QVERIFY(reloads(program, "[]"));
    QCOMPARE(articleCount(program.storePath()), 0);
  }

  void anArticleWithoutAnItemCodeIsFoundByItsBarcode() {
    TestProgram program;
    QVERIFY(reloads(program, R"([{"barcode":"b9","descr":"Nine"}])"));
    const auto found = program.context().itemsForCode("b9");
    QCOMPARE(found->size(), 1U);
    QVERIFY(found->front().item.isEmpty());
    QCOMPARE(found->front().descr, "Nine");
  }

  void anArticleWithoutACodeIsNotFoundByAnEmptyCode() {
    TestProgram program;
    QVERIFY(reloads(program, R"([{"barcode":"b8"},{"item":"B"},{"item":null,"barcode":null}])"));
    QCOMPARE(articleCount(program.storePath()), 3);
    QVERIFY(program.context().itemsForCode(QStringLiteral(""))->empty());
    const Items withBarcode = program.context().itemsForCode("b8")->front();
    QVERIFY(withBarcode.item.isNull());
    QVERIFY(withBarcode.descr.isNull());
    QVERIFY(program.context().itemsForCode("B")->front().barcode.isNull());
  }

  void anEmptyTextIsACode() {
    TestProgram program;
    QVERIFY(reloads(program, R"([{"barcode":"","item":"B","descr":""}])"));
    const Items found = program.context().itemsForCode(QStringLiteral(""))->front();
    QCOMPARE(found.item, "B");
    QVERIFY(!found.barcode.isNull());
    QVERIFY(!found.descr.isNull());
  }

  void anEmptyCatalogueNeedsNoStore() {
    TestProgram program;
    ManagedObjectContext noStore(std::make_shared<PersistentStoreCoordinator>(
        std::make_shared<const ManagedObjectModel>(ManagedObjectModel::bundledUrl())));
    program.service.answerWith("[]");
    WatchedReload reload(program, noStore);
    reload.run();
    QVERIFY(reload.result);
    QVERIFY(!program.environment.busy.isActive());
  }

  void anEmptyCatalogueNeedsNoReadableArticles() {
    TestProgram program;
    SQLite::Database(program.storePath().toStdString(), SQLite::OPEN_READWRITE)
        .exec("ALTER TABLE Items RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Items");
    QVERIFY(reloads(program, "[]"));
  }

  void theHttpStatusIsIgnored() {
    TestProgram program;
    program.service.answerWith(kOldCatalogue, 500);
    WatchedReload reload(program);
    reload.run();
    QVERIFY(reload.result);
    verifyOldCatalogue(program);
  }

  void anUnreadableAnswerKeepsTheCatalogue_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("HTML page") << QByteArray("<html></html>");
    QTest::newRow("object") << QByteArray(R"({"item":"A"})");
    QTest::newRow("number") << QByteArray("7");
    QTest::newRow("not UTF-8") << QByteArray("[{\"item\":\"\xFF\"}]");
    QTest::newRow("last element not an object") << catalogueOf(20000).chopped(1) + ",1]";
  }
  void anUnreadableAnswerKeepsTheCatalogue() {
    QFETCH(const QByteArray, body);
    TestProgram program;
    QVERIFY(reloads(program, kOldCatalogue));
    QVERIFY(!reloads(program, body));
    verifyOldCatalogue(program);
  }

  void aTruncatedAnswerKeepsTheCatalogue() {
    TestProgram program;
    QVERIFY(reloads(program, kOldCatalogue));
    const QByteArray body = R"([{"item":"X","descr":"é"},{}])";
    for (qsizetype size = 0; size < body.size(); ++size) {
      program.service.answerWith([&](const LoopbackService::Request &) {
        return LoopbackService::Answer::cutShort(body.first(size), body.size());
      });
      WatchedReload reload(program);
      reload.run();
      QVERIFY(!reload.result);
    }
    verifyOldCatalogue(program);
  }

  void aCompleteArrayShorterThanAnnouncedKeepsTheCatalogue() {
    TestProgram program;
    QVERIFY(reloads(program, kOldCatalogue));
    program.service.answerWith([](const LoopbackService::Request &) {
      return LoopbackService::Answer::cutShort("[]", 3);
    });
    WatchedReload reload(program);
    reload.run();
    QVERIFY(!reload.result);
    verifyOldCatalogue(program);
  }

  void anUnreachableServiceKeepsTheCatalogue() {
    TestProgram program;
    QVERIFY(reloads(program, kOldCatalogue));
    program.environment.serviceHost = LoopbackService::unreachableHost();
    WatchedReload reload(program);
    reload.run();
    QVERIFY(!reload.result);
    QVERIFY(!program.environment.busy.isActive());
    verifyOldCatalogue(program);
  }

  void aConnectionWithoutAnAnswerKeepsTheCatalogue() {
    TestProgram program;
    QVERIFY(reloads(program, kOldCatalogue));
    program.service.answerWith(
        [](const LoopbackService::Request &) { return LoopbackService::Answer::none(); });
    WatchedReload reload(program);
    reload.run();
    QVERIFY(!reload.result);
    verifyOldCatalogue(program);
  }

  void aReloadDoesNotChangePicks() {
    TestProgram program;
    program.context().insert(Picking{.doc = "4711", .item = "A", .pickqty = 3});
    QVERIFY(!program.context().save());
    QVERIFY(reloads(program, kOldCatalogue));
    QVERIFY(!reloads(program, "no"));
    const auto picks = program.context().pickings("4711");
    QCOMPARE(picks->size(), 1U);
    QCOMPARE(picks->front().pickqty, 3);
  }

  void aReloadSavesPendingChanges() {
    TestProgram program;
    program.context().insert(Picking{.doc = "4711"});
    QVERIFY(reloads(program, kOldCatalogue));
    QVERIFY(!program.context().hasChanges());
    QCOMPARE(program.context().pickings("4711")->size(), 1U);
    verifyOldCatalogue(program);
  }

  void theProgressIsReported() {
    TestProgram program;
    program.service.answerWith(catalogueOf(25000));
    WatchedReload reload(program);
    reload.reload.start();
    QVERIFY(program.environment.busy.isActive());
    QCOMPARE(program.environment.busy.title(), "Loading the articles …");
    QVERIFY(QTest::qWaitFor([&] { return reload.finishedCount == 1; }, kTimeout));
    QVERIFY(!program.environment.busy.isActive());
    QVERIFY(reload.showed("1.4 of 1.4 MB", 1.0));
    QVERIFY(reload.showed("0 of 25,000 articles", 0.0));
    QVERIFY(reload.showed("10,000 of 25,000 articles", 0.4));
    QVERIFY(reload.showed("20,000 of 25,000 articles", 0.8));
    QVERIFY(reload.showed("25,000 of 25,000 articles", 1.0));
  }

  void theReceivedBytesAreReportedIfTheLengthIsUnknown() {
    TestProgram program;
    program.service.answerWith([](const LoopbackService::Request &) {
      return LoopbackService::Answer{
          "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + catalogueOf(2500), true};
    });
    WatchedReload reload(program);
    reload.run();
    QVERIFY(reload.result);
    QVERIFY(reload.showed("0.1 MB", -1.0));
    QCOMPARE(articleCount(program.storePath()), 2500);
  }

  void aReloadDestroyedWhileWaitingKeepsTheCatalogue() {
    TestProgram program;
    QVERIFY(reloads(program, kOldCatalogue));
    program.service.answerWith(
        [](const LoopbackService::Request &) { return LoopbackService::Answer::silence(); });
    {
      WatchedReload reload(program);
      reload.reload.start();
      QVERIFY(QTest::qWaitFor([&] { return program.service.requests().size() == 2; }));
    }
    QVERIFY(!program.environment.busy.isActive());
    program.service.dropConnections();
    QCoreApplication::processEvents();
    verifyOldCatalogue(program);
  }

  void aReloadDestroyedWhileStoringLeavesOneCompleteCatalogue() {
    TestProgram program;
    QVERIFY(reloads(program, kOldCatalogue));
    program.service.answerWith(catalogueOf(kLargeCount));
    {
      WatchedReload reload(program);
      reload.reload.start();
      QVERIFY(QTest::qWaitFor(
          [&] { return program.environment.busy.progressText().contains("articles"); }, kTimeout));
    }
    QVERIFY(!program.environment.busy.isActive());
    QCoreApplication::processEvents();
    const int count = articleCount(program.storePath());
    QVERIFY(count == 2 || count == kLargeCount);
    program.context().insert(Picking{.doc = "4711"});
    QVERIFY(!program.context().save());
  }

  void aFailedSaveEndsTheProcess() {
    TestProgram program;
    SQLite::Database(program.storePath().toStdString(), SQLite::OPEN_READWRITE)
        .exec("ALTER TABLE Items RENAME TO Gone");
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {kReloadOption, program.storePath()});
    QVERIFY(child.waitForFinished(kTimeout));
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    const QByteArray log = child.readAllStandardError();
    QVERIFY2(log.contains("Unresolved error no such table: Items, {code = 1; extended code = 1}"),
             log);
  }

  void aKilledReloadLeavesOneCompleteCatalogue_data() {
    QTest::addColumn<QByteArray>("lastLine");
    QTest::newRow("cleared") << QByteArray("0 of 300,000 articles");
    QTest::newRow("half stored") << QByteArray("150,000 of 300,000 articles");
    QTest::newRow("all stored") << QByteArray("300,000 of 300,000 articles");
  }
  void aKilledReloadLeavesOneCompleteCatalogue() {
    QFETCH(const QByteArray, lastLine);
    TestProgram program;
    QVERIFY(reloads(program, kOldCatalogue));
    const QTemporaryDir folder;
    const QString path = folder.filePath("store.sqlite");
    QVERIFY(QFile::copy(program.storePath(), path));

    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {kReloadOption, path});
    QByteArray line;
    while (line != lastLine) {
      QVERIFY2(child.canReadLine() || child.waitForReadyRead(kTimeout),
               "The child process has stopped printing.");
      line = child.readLine().trimmed();
    }
    child.kill();
    QVERIFY(child.waitForFinished());

    const auto context = openStore(path);
    const bool isOld = articleCount(path) == 2;
    QVERIFY(isOld || articleCount(path) == kLargeCount);
    QCOMPARE(context->itemsForCode("b1")->size(), isOld ? 1U : 0U);
    QCOMPARE(context->itemsForCode("N299999")->size(), isOld ? 0U : 1U);
    context->insert(Picking{.doc = "4711"});
    QVERIFY(!context->save());
  }
};

CARTONPICK_TEST(CatalogueReloadTest);
CARTONPICK_TEST_CHILD(kReloadOption, reloadAndPrint);
#include "CatalogueReload_test.moc"
