#include "history/HistoryViewController.h"

#include "history/PickHistoryCell.h"
#include "summary/deliveryDetailsViewController.h"
#include "summary/pickTableCell.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <SQLiteCpp/Database.h>

namespace {

QDateTime utc(int month, int day, int hour, int minute = 0, int second = 0) {
  return QDateTime(QDate(2026, month, day), QTime(hour, minute, second), QTimeZone::utc());
}

/// A program with stored picks.
class PickedProgram : public TestProgram {
 public:
  void add(const QString &doc, const QDateTime &datepicked, int sent = 0,
           const QString &item = QStringLiteral("A"), int pickqty = 3) {
    context().insert(Picking{.barcode = u'b' + item,
                             .box = QStringLiteral("C1"),
                             .datepicked = datepicked,
                             .descr = QStringLiteral("Description of ") + item,
                             .doc = doc,
                             .item = item,
                             .ordernum = QStringLiteral("A1"),
                             .orderqty = 10,
                             .pickqty = pickqty,
                             .sent = sent});
    QVERIFY(!context().save());
  }

  HistoryViewController &open() {
    start().performSegueWithIdentifier(QStringLiteral("segueHistory"));
    return history();
  }

  [[nodiscard]] HistoryViewController &history() const {
    return *qobject_cast<HistoryViewController *>(start().presentedViewController());
  }

  /// Returns "doc synchronized start end" for each row.
  [[nodiscard]] QStringList rows() const {
    QStringList rows;
    const TableView &table = *history().tblHistoryOverview;
    for (int row = 0; row < table.rowCount(); ++row) {
      const auto cell = cellAt<PickHistoryCell>(table, row);
      rows << QStringLiteral("%1 %2 %3 %4")
                  .arg(cell.deliveryNo.text, cell.sent.text, cell.dateCreated.text,
                       cell.dateClosed.text);
    }
    return rows;
  }

  /// Returns "item pick/order" for each row of the summary.
  [[nodiscard]] QStringList summary() const {
    QStringList rows;
    const TableView &table = *history().deliveryDetailsVC()->tblPicking;
    for (int row = 0; row < table.rowCount(); ++row) {
      const auto cell = cellAt<pickTableCell>(table, row);
      rows << QStringLiteral("%1 %2/%3").arg(cell.item.text, cell.pickqty.text, cell.orderqty.text);
    }
    return rows;
  }

  void changeStore(const char *statement) const {
    SQLite::Database(storePath().toStdString(), SQLite::OPEN_READWRITE).exec(statement);
  }
};

const QString k4711 = QStringLiteral("4711");
const QString k0815 = QStringLiteral("0815");

}  // namespace

class HistoryViewControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void anEmptyStoreShowsOnlyTheHeader() {
    PickedProgram program;
    const HistoryViewController &history = program.open();
    QCOMPARE(history.tblHistoryOverview->rowCount(), 0);
    QVERIFY(history.arrayDeliveries().empty());
    QCOMPARE(headerOf<PickHistoryCell>(*history.tblHistoryOverview).deliveryNo.text,
             "Delivery Number");
  }

  void anUnreadableStoreShowsOnlyTheHeader() {
    PickedProgram program;
    program.add(k4711, utc(3, 2, 8));
    program.changeStore("ALTER TABLE Picking RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    program.open();
    QCOMPARE(program.rows(), QStringList());
    QCOMPARE(program.environment.alerts.count(), 0);
  }

  void theHeaderNamesTheColumns() {
    PickedProgram program;
    const auto header = headerOf<PickHistoryCell>(*program.open().tblHistoryOverview);
    QCOMPARE(QStringList({header.deliveryNo.text, header.sent.text, header.dateCreated.text,
                          header.dateClosed.text}),
             QStringList({"Delivery Number", "Synchronized", "Start Date", "End Date"}));
    QCOMPARE(header.backgroundColor, Colour::grey);
  }

  void rowsAndHeaderAreFiftyFivePointsHigh() {
    PickedProgram program;
    const HistoryViewController &history = program.open();
    QCOMPARE(history.tblHistoryOverview->rowHeight(), 55.0);
    QCOMPARE(history.tblHistoryOverview->headerHeight(), 55.0);
  }

  void hasOneReadOnlySection() {
    PickedProgram program;
    program.add(k4711, utc(3, 2, 8));
    HistoryViewController &history = program.open();
    const TableView &table = *history.tblHistoryOverview;
    QCOMPARE(history.numberOfSectionsInTableView(table), 1);
    QCOMPARE(history.numberOfRowsInSection(table, 0), 1);
    QCOMPARE(history.numberOfRowsInSection(table, 1), 0);
    QVERIFY(!history.canEditRowAtIndexPath(table, 0));
  }

  void aRowShowsTheFirstAndTheLastPickTime() {
    PickedProgram program;
    program.add(k4711, utc(3, 2, 8, 30));
    program.add(k4711, utc(3, 1, 9, 5));
    program.add(k4711, utc(3, 1, 12, 0));
    program.open();
    QCOMPARE(program.rows(), QStringList("4711 No 01/03/2026 11:05 02/03/2026 10:30"));
  }

  void picksAtTheSameTimeGiveEqualStartAndEndTimes() {
    PickedProgram program;
    program.add(k4711, utc(3, 2, 8));
    program.add(k4711, utc(3, 2, 8));
    program.open();
    QCOMPARE(program.rows(), QStringList("4711 No 02/03/2026 10:00 02/03/2026 10:00"));
  }

  void aDeliveryIsSynchronizedIfAllItsPicksAreSent_data() {
    QTest::addColumn<int>("sent");
    QTest::addColumn<QString>("row");
    QTest::newRow("unsent") << 0 << "4711 No 02/03/2026 10:00 02/03/2026 10:00";
    QTest::newRow("sent") << 1 << "4711 Yes 02/03/2026 10:00 02/03/2026 10:00";
    QTest::newRow("any other value") << -3 << "4711 Yes 02/03/2026 10:00 02/03/2026 10:00";
  }
  void aDeliveryIsSynchronizedIfAllItsPicksAreSent() {
    QFETCH(int, sent);
    PickedProgram program;
    program.add(k4711, utc(3, 2, 8), sent);
    program.add(k4711, utc(3, 2, 8), sent, QStringLiteral("B"));
    program.open();
    QTEST(program.rows().join(u'\n'), "row");
  }

  void aPartlySentDeliveryIsListedTwiceWithTheSameTimes() {
    PickedProgram program;
    program.add(k4711, utc(3, 1, 8), 1);
    program.add(k4711, utc(3, 2, 8), 1);
    program.add(k4711, utc(3, 5, 8), 0);
    program.open();
    QStringList rows = program.rows();
    rows.sort();
    QCOMPARE(rows, QStringList({"4711 No 01/03/2026 10:00 05/03/2026 10:00",
                                "4711 Yes 01/03/2026 10:00 05/03/2026 10:00"}));
  }

  void deliveriesAreSortedByTheirLastPickTime() {
    PickedProgram program;
    program.add(QStringLiteral("A"), utc(3, 5, 8));
    program.add(QStringLiteral("B"), utc(3, 1, 8));
    program.add(QStringLiteral("B"), utc(3, 9, 8));
    program.add(QStringLiteral("C"), utc(3, 2, 8));
    program.open();
    QCOMPARE(program.rows(), QStringList({"C No 02/03/2026 10:00 02/03/2026 10:00",
                                          "A No 05/03/2026 10:00 05/03/2026 10:00",
                                          "B No 01/03/2026 10:00 09/03/2026 10:00"}));
  }

  void sortingUsesTheSecondsAndMillisecondsThatAreNotShown() {
    PickedProgram program;
    program.add(QStringLiteral("A"), utc(3, 2, 8, 0, 59));
    program.add(QStringLiteral("B"), utc(3, 2, 8, 0, 1));
    program.add(QStringLiteral("C"), utc(3, 2, 8, 0, 30).addMSecs(1));
    program.add(QStringLiteral("D"), utc(3, 2, 8, 0, 30));
    program.open();
    QStringList docs;
    for (const DeliveryPickTimes &delivery : program.history().arrayDeliveries()) {
      docs << delivery.doc;
    }
    QCOMPARE(docs, QStringList({"B", "D", "C", "A"}));
  }

  void timesAreLocalBeforeAndAfterADaylightSavingChange() {
    PickedProgram program;
    program.add(k4711, utc(3, 29, 0, 30));
    program.add(k4711, utc(3, 29, 1, 30));
    program.open();
    QCOMPARE(program.rows(), QStringList("4711 No 29/03/2026 02:30 29/03/2026 04:30"));
  }

  void deliveriesPickedInTheRepeatedHourStayInOrder() {
    PickedProgram program;
    // In Athens, the clocks go back at 04:00 on October 25th.
    program.add(QStringLiteral("summer"), utc(10, 25, 0, 40));
    program.add(QStringLiteral("winter"), utc(10, 25, 1, 20));
    program.open();
    QCOMPARE(program.rows(), QStringList({"summer No 25/10/2026 03:40 25/10/2026 03:40",
                                          "winter No 25/10/2026 03:20 25/10/2026 03:20"}));
  }

  void timesAreInTheDevicesCurrentTimeZone() {
    PickedProgram program;
    program.add(k4711, utc(3, 2, 2));
    program.open();
    program.clock->setZone(QTimeZone("America/New_York"));
    QCOMPARE(program.rows(), QStringList("4711 No 01/03/2026 21:00 01/03/2026 21:00"));
  }

  void rowsAlternateInColour() {
    PickedProgram program;
    program.add(QStringLiteral("A"), utc(3, 1, 8));
    program.add(QStringLiteral("B"), utc(3, 2, 8));
    program.add(QStringLiteral("C"), utc(3, 3, 8));
    const TableView &table = *program.open().tblHistoryOverview;
    QCOMPARE(cellAt<PickHistoryCell>(table, 0).backgroundColor, Colour::lightGrey);
    QCOMPARE(cellAt<PickHistoryCell>(table, 1).backgroundColor, Colour::clear);
    QCOMPARE(cellAt<PickHistoryCell>(table, 2).backgroundColor, Colour::lightGrey);
  }

  void theListIsBuiltOncePerVisit() {
    PickedProgram program;
    program.open();
    program.add(k4711, utc(3, 2, 8));
    program.history().tblHistoryOverview->reloadData();
    QCOMPARE(program.rows(), QStringList());
    program.history().performSegueWithIdentifier(QStringLiteral("returnFromHistoryToStart"));
    program.open();
    QCOMPARE(program.rows().size(), 1);
  }

  void touchingARowShowsTheSummaryOfItsDelivery() {
    PickedProgram program;
    program.add(k4711, utc(3, 1, 8), 1, QStringLiteral("A"), 3);
    program.add(k4711, utc(3, 1, 8), 0, QStringLiteral("B"), 10);
    program.add(k0815, utc(3, 5, 8), 0, QStringLiteral("C"), 1);
    HistoryViewController &history = program.open();
    QSignalSpy flips(&history, &ViewController::flipped);
    history.tblHistoryOverview->touchRow(0);
    const deliveryDetailsViewController *summary = history.deliveryDetailsVC();
    QCOMPARE(history.overlay(), summary);
    QCOMPARE(summary->frame(), QRectF(310, 17, 675, 600));
    QCOMPARE(summary->lblDelivery->text(), "Summary for Delivery: 4711");
    QCOMPARE(program.summary(), QStringList({"A 3/10", "B 10/10"}));
    QCOMPARE(history.tblHistoryOverview->selectedRow(), 0);
    QCOMPARE(flips.count(), 1);
    QCOMPARE(flips.at(0).at(2).toBool(), true);
  }

  void rowsOfTheSameItemAreMerged() {
    PickedProgram program;
    program.add(k4711, utc(3, 1, 8), 1, QStringLiteral("A"), 3);
    program.add(k4711, utc(3, 2, 8), 1, QStringLiteral("A"), 4);
    program.open().tblHistoryOverview->touchRow(0);
    QCOMPARE(program.summary(), QStringList("A 3/14"));
  }

  void bothRowsOfAPartlySentDeliveryShowTheWholeDelivery() {
    PickedProgram program;
    program.add(k4711, utc(3, 1, 8), 1, QStringLiteral("A"));
    program.add(k4711, utc(3, 2, 8), 0, QStringLiteral("B"));
    const HistoryViewController &history = program.open();
    for (const int row : {0, 1}) {
      history.tblHistoryOverview->touchRow(row);
      QCOMPARE(program.summary(), QStringList({"A 3/10", "B 3/10"}));
    }
  }

  void touchingAnotherRowFlipsTheSummaryOutAndIn() {
    PickedProgram program;
    program.add(k4711, utc(3, 1, 8));
    program.add(k0815, utc(3, 2, 8));
    HistoryViewController &history = program.open();
    history.tblHistoryOverview->touchRow(0);
    const deliveryDetailsViewController *summary = history.deliveryDetailsVC();
    QSignalSpy flips(&history, &ViewController::flipped);
    history.tblHistoryOverview->touchRow(1);
    QCOMPARE(history.deliveryDetailsVC(), summary);
    QCOMPARE(history.overlay(), summary);
    QCOMPARE(summary->lblDelivery->text(), "Summary for Delivery: 0815");
    QCOMPARE(flips.count(), 2);
    QCOMPARE(flips.at(0).at(0).value<ViewController *>(), summary);
    QCOMPARE(flips.at(0).at(2).toBool(), false);
    QCOMPARE(flips.at(1).at(1).value<ViewController *>(), summary);
    QCOMPARE(flips.at(1).at(2).toBool(), true);
  }

  void aClosedSummaryIsReplacedByANewOne() {
    PickedProgram program;
    program.add(k4711, utc(3, 1, 8));
    HistoryViewController &history = program.open();
    history.tblHistoryOverview->touchRow(0);
    const QPointer<deliveryDetailsViewController> first = history.deliveryDetailsVC();
    first->btnCloseTouched();
    QCOMPARE(history.overlay(), nullptr);
    history.tblHistoryOverview->touchRow(0);
    QVERIFY(history.deliveryDetailsVC() != first.data());
    QCOMPARE(history.deliveryDetailsVC()->frame(), QRectF(310, 17, 675, 600));
    QTRY_VERIFY(first.isNull());
  }

  void aDeletedDeliveryHasAnEmptySummary() {
    PickedProgram program;
    program.add(k4711, utc(3, 1, 8));
    const HistoryViewController &history = program.open();
    program.changeStore("DELETE FROM Picking");
    history.tblHistoryOverview->touchRow(0);
    QVERIFY(history.overlay() != nullptr);
    QCOMPARE(program.summary(), QStringList());
  }

  void anUnreadableDeliveryShowsNoSummary() {
    PickedProgram program;
    program.add(k4711, utc(3, 1, 8));
    const HistoryViewController &history = program.open();
    program.changeStore("ALTER TABLE Picking RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    history.tblHistoryOverview->touchRow(0);
    QCOMPARE(history.overlay(), nullptr);
    QCOMPARE(program.environment.alerts.count(), 0);
  }

  void touchingATableWithAnotherTagShowsNoSummary() {
    PickedProgram program;
    program.add(k4711, utc(3, 1, 8));
    const HistoryViewController &history = program.open();
    QCOMPARE(history.tblHistoryOverview->tag(), 0);
    history.tblHistoryOverview->setTag(1);
    history.tblHistoryOverview->touchRow(0);
    QCOMPARE(history.overlay(), nullptr);
    QCOMPARE(history.tblHistoryOverview->selectedRow(), 0);
  }

  void theReturnToTheStartScreenPassesTheContext() {
    PickedProgram program;
    HistoryViewController &history = program.open();
    program.start().setManagedObjectContext(nullptr);
    history.performSegueWithIdentifier(QStringLiteral("returnFromHistoryToStart"));
    QCOMPARE(program.start().managedObjectContext(), &program.context());
  }

  void anUnknownSeguePassesNoContext() {
    PickedProgram program;
    HistoryViewController &history = program.open();
    program.start().setManagedObjectContext(nullptr);
    Segue segue{QStringLiteral("segueElsewhere"), &program.start()};
    history.prepareForSegue(segue);
    QCOMPARE(program.start().managedObjectContext(), nullptr);
    history.performSegueWithIdentifier(QStringLiteral("segueElsewhere"));
    QCOMPARE(program.start().presentedViewController(), &history);
  }
};

CARTONPICK_TEST(HistoryViewControllerTest);
#include "HistoryViewController_test.moc"
