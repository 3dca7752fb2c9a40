#include "delivery/PickRecorder.h"

#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QTest>

#include <SQLiteCpp/Database.h>

namespace {

const QString kDoc = QStringLiteral("4711");

BoxLine lineOf(const QString &item, int pickqty) {
  return {.barcode = u'b' + item,
          .descr = QStringLiteral("Description of ") + item,
          .doc = kDoc,
          .item = item,
          .ordernum = QStringLiteral("A1"),
          .orderqty = 9,
          .pickqty = pickqty};
}

LoosePick looseOf(const QString &item, int qty) {
  return {.barcode = u'b' + item,
          .box = QStringLiteral("1"),
          .datepicked = QDateTime(QDate(2026, 3, 1), QTime(7, 0), QTimeZone::utc()),
          .descr = QStringLiteral("Description of ") + item,
          .doc = kDoc,
          .item = item,
          .ordernum = QStringLiteral("A1"),
          .qty = qty};
}

/// Returns every attribute of `row` as text.
QStringList textsOf(const Picking &row) {
  return {row.barcode,
          row.box,
          row.datepicked.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
          row.descr,
          row.doc,
          row.item,
          row.ordernum,
          QString::number(row.orderqty),
          QString::number(row.pickqty),
          QString::number(row.sent)};
}

}  // namespace

class PickRecorderTest : public QObject {
  Q_OBJECT

 private slots:
  void aNewLineIsInserted() {
    TestProgram program;
    QVERIFY(record(program, QStringLiteral("C1"), lineOf(QStringLiteral("A"), 3)));
    QCOMPARE(rowsOf(program),
             QList<QStringList>({{"bA", "C1", "2026-03-02 08:12:05", "Description of A", "4711",
                                  "A", "A1", "9", "3", "0"}}));
    QVERIFY(!program.context().hasChanges());
  }

  void onlyTheQuantityOfAKnownLineChanges() {
    TestProgram program;
    QVERIFY(record(program, QStringLiteral("C1"), lineOf(QStringLiteral("A"), 3)));
    program.context().setSent(program.context().pickings(kDoc)->front(), 1);
    program.clock->set(program.clock->now().addDays(1));
    BoxLine changed = lineOf(QStringLiteral("A"), 7);
    changed.barcode = QStringLiteral("other");
    changed.descr = QStringLiteral("other");
    changed.ordernum = QStringLiteral("other");
    changed.orderqty = 1;
    QVERIFY(record(program, QStringLiteral("C1"), changed));
    QCOMPARE(rowsOf(program),
             QList<QStringList>({{"bA", "C1", "2026-03-02 08:12:05", "Description of A", "4711",
                                  "A", "A1", "9", "7", "1"}}));
    QVERIFY(!program.context().hasChanges());
  }

  void deliveryBoxAndItemIdentifyALine() {
    TestProgram program;
    BoxLine otherDelivery = lineOf(QStringLiteral("A"), 4);
    otherDelivery.doc = QStringLiteral("4712");
    QVERIFY(record(program, QStringLiteral("C1"), lineOf(QStringLiteral("A"), 1)));
    QVERIFY(record(program, QStringLiteral("C2"), lineOf(QStringLiteral("A"), 2)));
    QVERIFY(record(program, QStringLiteral("C1"), lineOf(QStringLiteral("B"), 3)));
    QVERIFY(record(program, QStringLiteral("C1"), otherDelivery));
    QCOMPARE(program.context().pickings(kDoc)->size(), 3U);
    QCOMPARE(program.context().pickings(QStringLiteral("4712"))->size(), 1U);
  }

  void emptyStringsIdentifyALineToo() {
    TestProgram program;
    BoxLine line = lineOf(QStringLiteral(""), 1);
    line.doc = QStringLiteral("");
    QVERIFY(record(program, QStringLiteral(""), line));
    line.pickqty = 2;
    QVERIFY(record(program, QStringLiteral(""), line));
    const auto rows = program.context().pickings(QStringLiteral(""));
    QCOMPARE(rows->size(), 1U);
    QCOMPARE(rows->front().pickqty, 2);
  }

  void onlyTheFirstOfSeveralRowsForALineChanges() {
    TestProgram program;
    for (const int pickqty : {1, 2}) {
      program.context().insert(Picking{.box = QStringLiteral("C1"),
                                       .doc = kDoc,
                                       .item = QStringLiteral("A"),
                                       .pickqty = pickqty});
    }
    QVERIFY(record(program, QStringLiteral("C1"), lineOf(QStringLiteral("A"), 7)));
    QCOMPARE(picksOf(program), QList<int>({7, 2}));
  }

  void nothingIsWrittenIfTheStoreCannotBeRead() {
    TestProgram program;
    SQLite::Database store(program.storePath().toStdString(), SQLite::OPEN_READWRITE);
    store.exec("ALTER TABLE Picking RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    QVERIFY(!record(program, QStringLiteral("C1"), lineOf(QStringLiteral("A"), 3)));
    QVERIFY(!program.context().hasChanges());
    store.exec("ALTER TABLE Lost RENAME TO Picking");
    QVERIFY(program.context().pickings(kDoc)->empty());
  }

  void recordingAListUpdatesTheRowsOfItsLoosePicks() {
    TestProgram program;
    program.context().insert(Picking{.doc = kDoc, .item = QStringLiteral("A"), .pickqty = 1});
    program.context().insert(Picking{.doc = kDoc, .item = QStringLiteral("B"), .pickqty = 2});
    recordPickList(program.context(), kDoc, {looseOf(QStringLiteral("B"), 8)});
    QCOMPARE(picksOf(program), QList<int>({1, 8}));
    QVERIFY(!program.context().hasChanges());
  }

  void boxesInAListDoNotChangeAnyRow() {
    TestProgram program;
    program.context().insert(Picking{.doc = kDoc, .item = QStringLiteral("A"), .pickqty = 1});
    recordPickList(program.context(), kDoc,
                   {BoxRecord{QStringLiteral("C1"), 9, 4, {lineOf(QStringLiteral("A"), 4)}}});
    QCOMPARE(picksOf(program), QList<int>({1}));
  }

  void onlyEntriesBeyondTheStoredRowsAreInserted() {
    TestProgram program;
    program.context().insert(Picking{.doc = kDoc, .item = QStringLiteral("Z"), .pickqty = 1});
    recordPickList(program.context(), kDoc,
                   {looseOf(QStringLiteral("A"), 5), looseOf(QStringLiteral("B"), 6)});
    const QList<QStringList> rows = rowsOf(program);
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows.at(1), QStringList({"bB", "1", "2026-03-01 07:00:00", "Description of B", "4711",
                                      "B", "A1", "0", "6", "0"}));
  }

  void anInsertedBoxHasOnlyItsName() {
    TestProgram program;
    recordPickList(program.context(), kDoc,
                   {BoxRecord{QStringLiteral("C1"), 9, 4, {lineOf(QStringLiteral("A"), 4)}}});
    const auto rows = program.context().pickings(QString());
    QCOMPARE(rows->size(), 1U);
    QCOMPARE(textsOf(rows->front()), QStringList({"", "C1", "", "", "", "", "", "0", "0", "0"}));
    QVERIFY(program.context().pickings(kDoc)->empty());
  }

  void aListIsNotRecordedIfTheStoreCannotBeRead() {
    TestProgram program;
    SQLite::Database store(program.storePath().toStdString(), SQLite::OPEN_READWRITE);
    store.exec("ALTER TABLE Picking RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    recordPickList(program.context(), kDoc, {looseOf(QStringLiteral("A"), 5)});
    QVERIFY(!program.context().hasChanges());
  }

 private:
  static bool record(TestProgram &program, const QString &box, const BoxLine &line) {
    return recordPick(program.context(), *program.clock, box, line);
  }

  static QList<QStringList> rowsOf(TestProgram &program) {
    QList<QStringList> rows;
    const auto picks = program.context().pickings(kDoc);
    for (const Picking &row : *picks) {
      rows << textsOf(row);
    }
    return rows;
  }

  static QList<int> picksOf(TestProgram &program) {
    QList<int> quantities;
    const auto picks = program.context().pickings(kDoc);
    for (const Picking &row : *picks) {
      quantities << row.pickqty;
    }
    return quantities;
  }
};

CARTONPICK_TEST(PickRecorderTest);
#include "PickRecorder_test.moc"
