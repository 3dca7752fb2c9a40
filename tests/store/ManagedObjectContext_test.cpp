#include "store/ManagedObjectContext.h"

#include "TemporaryStore.h"
#include "support/StoredArticles.h"
#include "support/TestClass.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>
#include <QTimeZone>

#include <SQLiteCpp/Statement.h>
#include <csignal>
#include <functional>
#include <limits>
#include <sqlite3.h>

namespace {

constexpr auto kDieUnsaved = "--die-unsaved";

QDateTime timeAt(qint64 milliseconds) {
  return QDateTime::fromMSecsSinceEpoch(milliseconds, QTimeZone::utc());
}

Picking pickOf(const QString &doc, const QString &box, const QString &item, int pickqty = 1) {
  return {.barcode = u'b' + item,
          .box = box,
          .datepicked = timeAt(1'772'437'925'123),
          .descr = QStringLiteral("Description of ") + item,
          .doc = doc,
          .item = item,
          .ordernum = QStringLiteral("A1"),
          .orderqty = 10,
          .pickqty = pickqty};
}

/// Returns the item codes of `picks`, or "none" if the fetch failed.
QString itemsOf(const ManagedObjectContext::Pickings &picks) {
  if (!picks) {
    return QStringLiteral("none");
  }
  QStringList items;
  for (const Picking &pick : *picks) {
    items.append(pick.item);
  }
  return items.join(u' ');
}

/// A context on a separate store.
struct TestContext {
  TemporaryStore store;
  std::shared_ptr<PersistentStoreCoordinator> coordinator = store.open();
  ManagedObjectContext context{coordinator};

  void insertSaved(const std::vector<Picking> &picks) {
    for (const Picking &pick : picks) {
      context.insert(pick);
    }
    QVERIFY(!context.save());
  }

  void addArticles(const std::vector<Items> &articles) const {
    for (const Items &article : articles) {
      addArticle(store.path(), article);
    }
  }
};

/// A query for a line as from `lineOf` for every delivery and value of `sent`, sorted. It looks up
/// the times of each delivery separately.
constexpr auto kPickTimesOneByOne = R"(
  SELECT group_concat(line, char(10)) FROM (
    SELECT DISTINCT
      ifnull('doc ' || doc, 'null') || ' ' || sent || ' ' ||
      ifnull((SELECT min(datepicked) FROM Picking WHERE doc IS delivery.doc), '-') || ' ' ||
      ifnull((SELECT max(datepicked) FROM Picking WHERE doc IS delivery.doc), '-') AS line
    FROM Picking AS delivery ORDER BY line))";

/// Adds texts that are easily damaged by quoting, encoding or conversion errors.
void addTexts() {
  QTest::addColumn<QString>("text");
  QTest::newRow("plain") << "85123A";
  QTest::newRow("empty") << "";
  QTest::newRow("surrounding spaces") << "  85123A ";
  QTest::newRow("single quotes") << "' OR '1'='1";
  QTest::newRow("double quotes") << "\"a\"";
  QTest::newRow("end of a statement") << "x'; DROP TABLE Picking; --";
  QTest::newRow("percent and underscore") << "100%_";
  QTest::newRow("question mark") << "?1";
  QTest::newRow("line breaks and a tab") << "a\r\nb\tc";
  QTest::newRow("Greek") << QStringLiteral("Κούτα");
  QTest::newRow("emoji") << QStringLiteral("📦👩‍🏭");
  QTest::newRow("combining character") << QStringLiteral("e\u0301");
  QTest::newRow("NUL inside") << QStringLiteral("a") + QChar(u'\0') + QStringLiteral("b");
  QTest::newRow("10,000 characters") << QString(10'000, u'x');
  QTest::newRow("looks like a number") << "007";
  QTest::newRow("begins with U+FEFF twice") << QStringLiteral("\uFEFF\uFEFF7");
}

/// Saves a pick in the store at the given path, inserts another one, and kills the process.
int dieUnsaved(const QStringList &arguments) {
  ManagedObjectContext context(openStore(arguments.at(0)));
  context.insert(pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("saved")));
  if (context.save()) {
    return EXIT_FAILURE;
  }
  context.insert(pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("unsaved")));
  return std::raise(SIGKILL);
}

}  // namespace

class ManagedObjectContextTest : public QObject {
  Q_OBJECT

 private slots:
  void aBlobInAUtf16FileIsReadAsText() {
    const TemporaryStore store;
    store.connect().exec("PRAGMA encoding = 'UTF-16le'; CREATE TABLE Notes (text TEXT)");
    ManagedObjectContext context(store.open(PersistentStoreCoordinator::Migration::Automatic));
    store.connect().exec("INSERT INTO Picking (doc, item) VALUES ('4711', X'410042004300')");
    QCOMPARE(itemsOf(context.pickings(QStringLiteral("4711"))), "ABC");
  }

  void everyTextIsStoredUnchanged_data() { addTexts(); }
  void everyTextIsStoredUnchanged() {
    QFETCH(const QString, text);
    TemporaryStore store;
    {
      ManagedObjectContext context(store.open());
      context.insert(Picking{.barcode = text,
                             .box = text,
                             .descr = text,
                             .doc = text,
                             .item = text,
                             .ordernum = text});
      QVERIFY(!context.save());
    }
    addArticle(store.path(), {text, text, text});
    ManagedObjectContext context(store.open());
    for (const auto &picks :
         {context.pickings(text), context.pickingsOfOrder(text, text),
          context.pickingsOfLine(text, text, text), context.unsentPickings(text)}) {
      QVERIFY(picks.has_value());
      QCOMPARE(picks->size(), 1U);
      const Picking &pick = picks->front();
      for (const QString &stored :
           {pick.barcode, pick.box, pick.descr, pick.doc, pick.item, pick.ordernum}) {
        QCOMPARE(stored, text);
        QVERIFY(!stored.isNull());
      }
    }
    const auto items = context.itemsForCode(text);
    QCOMPARE(items->size(), 1U);
    QCOMPARE(items->front().descr, text);
    QCOMPARE(context.deliveryPickTimes()->front().doc, text);
  }

  void textsAreComparedExactly_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("asked");
    QTest::newRow("case") << "abc"
                          << "ABC";
    QTest::newRow("trailing space") << "abc"
                                    << "abc ";
    QTest::newRow("leading space") << "abc"
                                   << " abc";
    QTest::newRow("leading zero") << "7"
                                  << "07";
    QTest::newRow("percent") << "abc"
                             << "%";
    QTest::newRow("asterisk") << "abc"
                              << "*";
    QTest::newRow("composed character") << QStringLiteral("e\u0301") << QStringLiteral("\u00e9");
    QTest::newRow("up to a NUL") << QStringLiteral("a") + QChar(u'\0') + QStringLiteral("b") << "a";
    QTest::newRow("empty") << "abc"
                           << "";
  }
  void textsAreComparedExactly() {
    QFETCH(const QString, stored);
    QFETCH(const QString, asked);
    TestContext test;
    test.insertSaved({pickOf(stored, stored, stored)});
    addArticle(test.store.path(), {stored, stored, {}});
    QCOMPARE(test.context.pickings(asked)->size(), 0U);
    QCOMPARE(test.context.pickingsOfLine(stored, asked, stored)->size(), 0U);
    QCOMPARE(test.context.pickingsOfLine(stored, stored, asked)->size(), 0U);
    QCOMPARE(test.context.itemsForCode(asked)->size(), 0U);
  }

  void aMissingTextIsReadAsNull() {
    TestContext test;
    const QString doc = QStringLiteral("4711");
    test.insertSaved({{.doc = doc}});
    const Picking pick = test.context.pickings(doc)->front();
    for (const QString &text : {pick.barcode, pick.box, pick.descr, pick.item, pick.ordernum}) {
      QVERIFY(text.isNull());
    }
    QVERIFY(!pick.datepicked.isValid());
    addArticle(test.store.path(), {QStringLiteral("b1"), {}, {}});
    const Items item = test.context.itemsForCode(QStringLiteral("b1"))->front();
    QVERIFY(item.item.isNull());
    QVERIFY(item.descr.isNull());
  }

  void aNullStringFindsAMissingText() {
    TestContext test;
    const QString doc = QStringLiteral("4711");
    test.insertSaved({{.doc = doc, .item = QStringLiteral("A")}, {.item = QStringLiteral("B")}});
    QCOMPARE(itemsOf(test.context.pickingsOfLine(doc, {}, QStringLiteral("A"))), "A");
    QCOMPARE(itemsOf(test.context.pickingsOfOrder(doc, {})), "A");
    QCOMPARE(itemsOf(test.context.pickings({})), "B");
    QCOMPARE(itemsOf(test.context.unsentPickings({})), "B");
    QCOMPARE(itemsOf(test.context.pickings(QStringLiteral(""))), "");
  }

  void numbersAndTimesAreStoredUnchanged() {
    constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
    const QString doc = QStringLiteral("4711");
    TestContext test;
    test.insertSaved(
        {{.datepicked = timeAt(-1), .doc = doc, .orderqty = kMin, .pickqty = kMax, .sent = 1},
         {.datepicked = timeAt(1'772'437'925'123), .doc = doc}});
    const auto picks = test.context.pickings(doc);
    QCOMPARE(picks->at(0).orderqty, kMin);
    QCOMPARE(picks->at(0).pickqty, kMax);
    QCOMPARE(picks->at(0).sent, 1);
    QCOMPARE(picks->at(0).datepicked.toMSecsSinceEpoch(), -1);
    QCOMPARE(picks->at(1).datepicked, timeAt(1'772'437'925'123));
    QCOMPARE(picks->at(1).datepicked.timeSpec(), Qt::UTC);
  }

  void aTimeInAnyZoneIsStoredAsTheSameInstant() {
    TestContext test;
    Picking pick = pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("A"));
    pick.datepicked = QDateTime({2026, 7, 1}, {12, 0}, QTimeZone("Asia/Tokyo"));
    test.insertSaved({pick});
    QCOMPARE(test.context.pickings(QStringLiteral("4711"))->front().datepicked,
             QDateTime({2026, 7, 1}, {3, 0}, QTimeZone::utc()));
  }

  void onlyAStoredPickHasARowId() {
    TestContext test;
    QCOMPARE(Picking{}.rowId, 0);
    test.insertSaved({pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("A"))});
    QVERIFY(test.context.pickings(QStringLiteral("4711"))->front().rowId > 0);
  }

  void rowsAreInInsertionOrder() {
    TestContext test;
    const QString doc = QStringLiteral("4711");
    std::vector<Picking> picks;
    for (const char *item : {"D", "A", "C", "B"}) {
      picks.push_back(pickOf(doc, QStringLiteral("C1"), QString::fromLatin1(item)));
      picks.back().datepicked = timeAt(1'000'000 - static_cast<qint64>(picks.size()));
      picks.back().box = QString::number(9 - picks.size());
    }
    test.insertSaved(picks);
    QCOMPARE(itemsOf(test.context.pickings(doc)), "D A C B");
    QCOMPARE(itemsOf(test.context.pickingsOfOrder(doc, QStringLiteral("A1"))), "D A C B");
    QCOMPARE(itemsOf(test.context.unsentPickings(doc)), "D A C B");
  }

  void rowsOfOneLineAreInInsertionOrder() {
    TestContext test;
    const QString doc = QStringLiteral("4711");
    const QString box = QStringLiteral("C1");
    const QString item = QStringLiteral("A");
    test.insertSaved(
        {pickOf(doc, box, item, 3), pickOf(doc, box, item, 1), pickOf(doc, box, item, 2)});
    const auto picks = test.context.pickingsOfLine(doc, box, item);
    QCOMPARE(picks->size(), 3U);
    QCOMPARE(picks->at(0).pickqty, 3);
    QCOMPARE(picks->at(1).pickqty, 1);
    QCOMPARE(picks->at(2).pickqty, 2);
  }

  void anUnpickedDeliveryHasNoRows() {
    TestContext test;
    test.insertSaved({pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("A"))});
    const QString other = QStringLiteral("4712");
    QCOMPARE(itemsOf(test.context.pickings(other)), "");
    QCOMPARE(itemsOf(test.context.pickingsOfOrder(other, QStringLiteral("A1"))), "");
    QCOMPARE(itemsOf(test.context.pickingsOfOrder(QStringLiteral("4711"), QStringLiteral("A2"))),
             "");
    QCOMPARE(itemsOf(test.context.pickingsOfLine(other, QStringLiteral("C1"), QStringLiteral("A"))),
             "");
    QCOMPARE(itemsOf(test.context.unsentPickings(other)), "");
  }

  void unsentPickingsAreThoseWithoutTheSentFlag() {
    TestContext test;
    const QString doc = QStringLiteral("4711");
    test.insertSaved({pickOf(doc, QStringLiteral("C1"), QStringLiteral("A")),
                      pickOf(doc, QStringLiteral("C1"), QStringLiteral("B")),
                      pickOf(doc, QStringLiteral("C1"), QStringLiteral("C"))});
    test.context.setSent(test.context.pickings(doc)->at(1), 1);
    QCOMPARE(itemsOf(test.context.unsentPickings(doc)), "A C");
    test.context.setSent(test.context.pickings(doc)->at(1), 0);
    QCOMPARE(itemsOf(test.context.unsentPickings(doc)), "A B C");
  }

  void anUpdateChangesOneAttributeOfOneRow() {
    TestContext test;
    const QString doc = QStringLiteral("4711");
    test.insertSaved({pickOf(doc, QStringLiteral("C1"), QStringLiteral("A"), 3),
                      pickOf(doc, QStringLiteral("C1"), QStringLiteral("B"), 4)});
    const auto before = test.context.pickings(doc);
    test.context.setPickqty(before->at(0), 7);
    test.context.setSent(before->at(1), 1);
    QVERIFY(!test.context.save());
    const auto after = test.context.pickings(doc);
    QCOMPARE(after->at(0).pickqty, 7);
    QCOMPARE(after->at(0).sent, 0);
    QCOMPARE(after->at(1).pickqty, 4);
    QCOMPARE(after->at(1).sent, 1);
    for (std::size_t i = 0; i < 2; ++i) {
      QCOMPARE(after->at(i).rowId, before->at(i).rowId);
      QCOMPARE(after->at(i).barcode, before->at(i).barcode);
      QCOMPARE(after->at(i).datepicked, before->at(i).datepicked);
      QCOMPARE(after->at(i).descr, before->at(i).descr);
      QCOMPARE(after->at(i).ordernum, before->at(i).ordernum);
      QCOMPARE(after->at(i).orderqty, before->at(i).orderqty);
    }
  }

  void anArticleIsFoundByItemCodeOrBarcode() {
    TestContext test;
    test.addArticles({{QStringLiteral("b1"), QStringLiteral("i1"), QStringLiteral("one")},
                      {QStringLiteral("b2"), QStringLiteral("i2"), QStringLiteral("two")}});
    QCOMPARE(test.context.itemsForCode(QStringLiteral("i2"))->front().descr, "two");
    QCOMPARE(test.context.itemsForCode(QStringLiteral("b1"))->front().descr, "one");
    QVERIFY(test.context.itemsForCode(QStringLiteral("x"))->empty());
  }

  void theFirstOfSeveralArticlesIsFound() {
    TestContext test;
    const QString code = QStringLiteral("same");
    test.addArticles({{QStringLiteral("b0"), QStringLiteral("i0"), QStringLiteral("zero")},
                      {code, QStringLiteral("i1"), QStringLiteral("one")},
                      {QStringLiteral("b2"), code, QStringLiteral("two")},
                      {code, code, QStringLiteral("three")}});
    const auto items = test.context.itemsForCode(code);
    QCOMPARE(items->size(), 1U);
    QCOMPARE(items->front().descr, "one");
  }

  void anEmptyCatalogueHasNoArticles() {
    TestContext test;
    QVERIFY(test.context.itemsForCode(QStringLiteral("x"))->empty());
    QCOMPARE(test.context.hasItems(), std::optional(false));
    test.addArticles({{}});
    QCOMPARE(test.context.hasItems(), std::optional(true));
  }

  void anArticleWithoutCodesIsNotFound() {
    TestContext test;
    test.addArticles({{{}, {}, QStringLiteral("no code")}});
    QVERIFY(test.context.itemsForCode(QStringLiteral(""))->empty());
    QVERIFY(test.context.itemsForCode(QString())->empty());
  }

  void aDeliveryHasOneGroupPerValueOfSent() {
    TestContext test;
    Picking sent = pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("A"));
    sent.sent = 1;
    test.insertSaved({pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("B")),
                      pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("C")),
                      sent,
                      pickOf(QStringLiteral("4712"), QStringLiteral("C1"), QStringLiteral("A"))});
    QStringList groups;
    const auto rows = test.context.deliveryPickTimes();
    for (const DeliveryPickTimes &group : *rows) {
      groups.append(group.doc + u':' + QString::number(group.sent));
    }
    groups.sort();
    QCOMPARE(groups.join(u' '), "4711:0 4711:1 4712:0");
  }

  void pickTimesCoverAllPicksOfADelivery() {
    TestContext test;
    const QString doc = QStringLiteral("4711");
    std::vector<Picking> picks;
    for (const qint64 time : {3000, 1000, 2000}) {
      picks.push_back({.datepicked = timeAt(time), .doc = doc, .sent = time == 1000 ? 1 : 0});
    }
    picks.push_back({.doc = doc});
    picks.push_back({.datepicked = timeAt(1), .doc = QStringLiteral("other")});
    test.insertSaved(picks);
    const auto groups = test.context.deliveryPickTimes();
    QCOMPARE(groups->size(), 3U);
    for (const DeliveryPickTimes &group : *groups) {
      const bool isOther = group.doc != doc;
      QCOMPARE(group.times.mindatepicked, timeAt(isOther ? 1 : 1000));
      QCOMPARE(group.times.maxdatepicked, timeAt(isOther ? 1 : 3000));
    }
  }

  void aDeliveryWithoutTimesHasNoPickTimes() {
    TestContext test;
    test.insertSaved({{.doc = QStringLiteral("4711")}});
    const auto groups = test.context.deliveryPickTimes();
    QCOMPARE(groups->size(), 1U);
    QVERIFY(!groups->front().times.mindatepicked.isValid());
    QVERIFY(!groups->front().times.maxdatepicked.isValid());
  }

  void pickTimesMatchThoseQueriedPerDelivery() {
    QRandomGenerator random(20260302);
    for (int round = 0; round < 20; ++round) {
      TestContext test;
      const int count = random.bounded(200);
      std::vector<Picking> picks;
      for (int i = 0; i < count; ++i) {
        Picking pick;
        const int doc = random.bounded(30);
        pick.doc = doc == 0 ? QString() : doc == 1 ? QStringLiteral("") : QString::number(doc);
        pick.sent = random.bounded(2);
        if (random.bounded(4) != 0) {
          pick.datepicked = timeAt(random.bounded(1'000'000));
        }
        picks.push_back(pick);
      }
      test.insertSaved(picks);

      QStringList lines;
      const auto groups = test.context.deliveryPickTimes();
      for (const DeliveryPickTimes &group : *groups) {
        lines.append(lineOf(group));
      }
      lines.sort();
      QCOMPARE(lines.join(u'\n'), test.store.valueOf(kPickTimesOneByOne));
    }
  }

  void everyFetchUsesAnIndex() {
    TestContext test;
    sqlite3 *database = test.coordinator->database()->getHandle();
    QStringList statements;
    sqlite3_trace_v2(
        database, SQLITE_TRACE_STMT,
        [](unsigned /*type*/, void *list, void *statement, void * /*text*/) {
          static_cast<QStringList *>(list)->append(
              QString::fromUtf8(sqlite3_sql(static_cast<sqlite3_stmt *>(statement))));
          return 0;
        },
        &statements);
    const QString x = QStringLiteral("x");
    QVERIFY(test.context.pickingsOfOrder(x, x));
    QVERIFY(test.context.itemsForCode(x));
    QVERIFY(test.context.pickingsOfLine(x, x, x));
    QVERIFY(test.context.unsentPickings(x));
    QVERIFY(test.context.deliveryPickTimes());
    QVERIFY(test.context.pickings(x));
    sqlite3_trace_v2(database, 0, nullptr, nullptr);
    QCOMPARE(statements.size(), 6);
    for (const QString &statement : std::as_const(statements)) {
      SQLite::Statement plan(*test.coordinator->database(),
                             "EXPLAIN QUERY PLAN " + statement.toStdString());
      int tables = 0;
      while (plan.executeStep()) {
        const QString step = QString::fromStdString(plan.getColumn("detail").getString());
        if (step.contains(u"Picking") || step.contains(u"Items")) {
          ++tables;
          QVERIFY2(step.contains(u" USING "), qPrintable(statement + QStringLiteral(": ") + step));
        }
      }
      QVERIFY2(tables > 0, qPrintable(statement));
    }
  }

  void changesArePendingUntilTheyAreSaved() {
    TestContext test;
    QVERIFY(!test.context.hasChanges());
    const QString doc = QStringLiteral("4711");
    test.context.insert(pickOf(doc, QStringLiteral("C1"), QStringLiteral("A")));
    QVERIFY(test.context.hasChanges());
    QCOMPARE(itemsOf(test.context.pickings(doc)), "A");
    QCOMPARE(test.store.valueOf("SELECT count(*) FROM Picking"), "0");
    QVERIFY(!test.context.save());
    QVERIFY(!test.context.hasChanges());
    QCOMPARE(test.store.valueOf("SELECT count(*) FROM Picking"), "1");
  }

  void everyKindOfChangeIsPending() {
    TestContext test;
    test.insertSaved({pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("A"))});
    const Picking pick = test.context.pickings(QStringLiteral("4711"))->front();
    const std::vector<std::function<void()>> changes{[&] { test.context.setPickqty(pick, 2); },
                                                     [&] { test.context.setSent(pick, 1); },
                                                     [&] { test.context.insert(Picking{}); }};
    for (const auto &change : changes) {
      QVERIFY(!test.context.hasChanges());
      change();
      QVERIFY(test.context.hasChanges());
      QVERIFY(!test.context.save());
    }
  }

  void savingWithoutChangesSucceeds() {
    TestContext test;
    QVERIFY(!test.context.save());
    ManagedObjectContext withoutStore(openStore(QStringLiteral("/missing/QIR_Pick.sqlite")));
    QVERIFY(!withoutStore.save());
  }

  void unsavedChangesAreLostWithTheContext() {
    const TemporaryStore store;
    {
      ManagedObjectContext context(store.open());
      context.insert(pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("A")));
    }
    ManagedObjectContext context(store.open());
    QCOMPARE(itemsOf(context.pickings(QStringLiteral("4711"))), "");
  }

  void unsavedChangesAreLostWhenTheProcessIsKilled() {
    const TemporaryStore store;
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {kDieUnsaved, store.path()});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    ManagedObjectContext context(store.open());
    QCOMPARE(itemsOf(context.pickings(QStringLiteral("4711"))), "saved");
  }

  void fetchesWithoutAStoreFail() {
    const QString x = QStringLiteral("x");
    ManagedObjectContext context(openStore(QStringLiteral("/missing/QIR_Pick.sqlite")));
    QVERIFY(context.storePath().isEmpty());
    QVERIFY(!context.pickingsOfOrder(x, x));
    QVERIFY(!context.itemsForCode(x));
    QVERIFY(!context.pickingsOfLine(x, x, x));
    QVERIFY(!context.unsentPickings(x));
    QVERIFY(!context.deliveryPickTimes());
    QVERIFY(!context.pickings(x));
  }

  void aSaveWithoutAStoreFails() {
    ManagedObjectContext context(openStore(QStringLiteral("/missing/QIR_Pick.sqlite")));
    context.insert(Picking{});
    QVERIFY(context.hasChanges());
    const auto error = context.save();
    QVERIFY(error.has_value());
    QCOMPARE(error->description, "There is no store.");
    QVERIFY(context.hasChanges());
  }

  void aFetchCanSucceedAfterAFailedOne() {
    TestContext test;
    test.insertSaved({pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("A"))});
    SQLite::Database &database = *test.coordinator->database();
    database.exec("ALTER TABLE Picking RENAME TO Away");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    QCOMPARE(itemsOf(test.context.pickings(QStringLiteral("4711"))), "none");
    database.exec("ALTER TABLE Away RENAME TO Picking");
    QCOMPARE(itemsOf(test.context.pickings(QStringLiteral("4711"))), "A");
  }

  void fetchesAndSavesFailIfATableIsMissing() {
    TestContext test;
    test.store.connect().exec("DROP TABLE Items");
    QTest::ignoreMessage(QtWarningMsg,
                         "The store lacks tables or columns of its version: no such table: Items");
    ManagedObjectContext context(test.store.open());
    QVERIFY(!context.pickings(QStringLiteral("x")));
    context.insert(Picking{});
    QVERIFY(context.save().has_value());
  }

  void storePathIsThePathOfTheFile() {
    TestContext test;
    QCOMPARE(test.context.storePath(), test.store.path());
  }

  void aSaveFailsWhileAnotherConnectionWrites() {
    TestContext test;
    test.coordinator->database()->setBusyTimeout(0);
    SQLite::Database other = test.store.connect();
    other.exec("BEGIN IMMEDIATE");
    test.context.insert(Picking{});
    const auto error = test.context.save();
    QVERIFY(error.has_value());
    QCOMPARE(error->description, "database is locked");
    QCOMPARE(error->userInfo, "{code = 5; extended code = 5}");
    QVERIFY(test.context.hasChanges());
  }

  void aRollbackDropsTheUnsavedChanges() {
    TestContext test;
    test.insertSaved({pickOf("4711", "C1", "A")});
    test.context.insert(pickOf("4711", "C1", "B"));
    test.context.rollback();
    QVERIFY(!test.context.hasChanges());
    QCOMPARE(itemsOf(test.context.pickings("4711")), "A");
    test.insertSaved({pickOf("4711", "C1", "C")});
    QCOMPARE(itemsOf(test.context.pickings("4711")), "A C");
  }

  void afterARollbackAFailedChangeDoesNotPreventASave() {
    TestContext test;
    test.coordinator->database()->setBusyTimeout(0);
    {
      SQLite::Database other = test.store.connect();
      other.exec("BEGIN IMMEDIATE");
      test.context.insert(pickOf("4711", "C1", "A"));
      QVERIFY(test.context.save());
      QCOMPARE(test.context.errorString(), "database is locked");
    }
    test.context.rollback();
    test.insertSaved({pickOf("4711", "C1", "B")});
    QCOMPARE(itemsOf(test.context.pickings("4711")), "B");
  }

  void theErrorStringIsTheReasonOfAFailedFetch() {
    TestContext test;
    QVERIFY(test.context.isUsable());
    test.store.connect().exec("DROP TABLE Picking");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    QVERIFY(!test.context.pickings("4711"));
    QCOMPARE(test.context.errorString(), "no such table: Picking");
  }

  void theErrorStringIsTheReasonWhyAStoreIsNotUsable() {
    const QTemporaryDir folder;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not opened"));
    const ManagedObjectContext context(openStore(folder.filePath("missing/x.sqlite")));
    QVERIFY(!context.isUsable());
    QVERIFY(!context.errorString().isEmpty());
  }

  void afterAFailedChangeNothingIsSaved() {
    TestContext test;
    test.insertSaved({pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("A"))});
    SQLite::Database &database = *test.coordinator->database();
    const int pages = database.execAndGet("PRAGMA page_count").getInt();
    database.exec("PRAGMA max_page_count = " + std::to_string(pages + 1));
    test.context.insert(Picking{.descr = QString(1'000'000, u'x')});
    test.context.insert(pickOf(QStringLiteral("4711"), QStringLiteral("C1"), QStringLiteral("B")));
    const auto error = test.context.save();
    QVERIFY(error.has_value());
    QCOMPARE(error->description, "database or disk is full");
    QCOMPARE(test.store.valueOf("SELECT group_concat(item) FROM Picking"), "A");
  }

 private:
  static QString lineOf(const DeliveryPickTimes &entry) {
    const auto textOf = [](const QDateTime &time) {
      return time.isValid() ? QString::number(time.toMSecsSinceEpoch()) : QStringLiteral("-");
    };
    return QStringLiteral("%1%2 %3 %4 %5")
        .arg(entry.doc.isNull() ? QStringLiteral("null") : QStringLiteral("doc "), entry.doc,
             QString::number(entry.sent), textOf(entry.times.mindatepicked),
             textOf(entry.times.maxdatepicked));
  }
};

CARTONPICK_TEST(ManagedObjectContextTest);
CARTONPICK_TEST_CHILD(kDieUnsaved, dieUnsaved);
#include "ManagedObjectContext_test.moc"
