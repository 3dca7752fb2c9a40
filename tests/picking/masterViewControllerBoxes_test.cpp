#include "picking/boxTableViewCell.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QSignalSpy>
#include <QTest>

namespace {

/// Returns "box pick/order colour state" for row `row` of the box list.
QString rowOf(const TestProgram &program, int row) {
  const auto cell = cellAt<boxTableViewCell>(*program.master().tblBoxes, row);
  return QStringLiteral("%1 %2/%3 %4 %5")
      .arg(cell.lblBox.text, cell.lblPickQty.text, cell.lblOrderQty.text,
           cell.backgroundColorName(), cell.state);
}

/// Returns the counters: total, unopened, completed, incomplete.
QStringList countersOf(const TestProgram &program) {
  const masterViewController &master = program.master();
  return textsOf({master.lblBoxesTotalValue, master.lblBoxesUnopenedValue,
                  master.lblBoxesCompletedValue, master.lblBoxesIncompleteValue});
}

LoosePick loosePick() {
  return {.barcode = QStringLiteral("29007"),
          .box = QStringLiteral("1"),
          .item = QStringLiteral("X"),
          .qty = 4};
}

}  // namespace

/// The box list and the four counters.
class masterViewControllerBoxesTest : public QObject {
  Q_OBJECT

 private slots:
  void withoutADeliveryThereAreNoBoxes() {
    TestProgram program;
    program.enterPicking();
    program.master().QuantityChangedOnDetailView();
    QCOMPARE(program.master().tblBoxes->rowCount(), 0);
    QCOMPARE(countersOf(program), QStringList({"0", "0", "0", "0"}));
  }

  void anEmptyListHasNoBoxes() {
    TestProgram program;
    program.enterPicking();
    show(program, {});
    QCOMPARE(program.master().tblBoxes->rowCount(), 0);
    QCOMPARE(countersOf(program), QStringList({"0", "0", "0", "0"}));
  }

  void onlyTheTableWithTagTwoHasRows() {
    TestProgram program;
    program.enterPicking();
    masterViewController &master = program.master();
    show(program, {BoxRecord{QStringLiteral("C1"), 5, 0, {}}});
    QCOMPARE(master.tblBoxes->tag(), 2);
    QCOMPARE(master.numberOfRowsInSection(*master.tblBoxes, 0), 1);
    QCOMPARE(master.numberOfRowsInSection(*master.tblBoxes, 1), 0);
    for (TableView *table : {master.tblOrders, master.tblStores}) {
      QVERIFY(table->tag() != 2);
      QCOMPARE(master.numberOfRowsInSection(*table, 0), 0);
      table->setTag(1);
      QCOMPARE(master.numberOfRowsInSection(*table, 0), 0);
    }
  }

  void everyTableHasOneSection() {
    TestProgram program;
    program.enterPicking();
    masterViewController &master = program.master();
    for (const TableView *table : {master.tblBoxes, master.tblOrders, master.tblStores}) {
      QCOMPARE(master.numberOfSectionsInTableView(*table), 1);
    }
  }

  void rowsCannotBeEdited() {
    TestProgram program;
    program.enterPicking();
    masterViewController &master = program.master();
    show(program, {BoxRecord{QStringLiteral("C1"), 5, 0, {}}});
    using Style = TableViewDataSource::EditingStyle;
    QCOMPARE(master.editingStyleForRowAtIndexPath(*master.tblBoxes, 0), Style::None);
    master.commitEditingStyle(*master.tblBoxes, Style::Delete, 0);
    master.accessoryButtonTappedForRowWithIndexPath(*master.tblBoxes, 0);
    QCOMPARE(master.tblBoxes->numberOfRows(), 1);
    QCOMPARE(program.detail().curBoxIndex(), -1);
  }

  void aRowShowsABoxInTheColourOfItsState_data() {
    QTest::addColumn<int>("pick");
    QTest::addColumn<int>("order");
    QTest::addColumn<QString>("row");
    QTest::newRow("unopened") << 0 << 5 << QStringLiteral("C1 0/5 yellow unopened");
    QTest::newRow("partly picked") << 2 << 5 << QStringLiteral("C1 2/5 red incomplete");
    QTest::newRow("completed") << 5 << 5 << QStringLiteral("C1 5/5 green completed");
    QTest::newRow("more than ordered") << 7 << 5 << QStringLiteral("C1 7/5 red incomplete");
    QTest::newRow("nothing ordered") << 0 << 0 << QStringLiteral("C1 0/0 green completed");
    QTest::newRow("picked without an order") << 3 << 0 << QStringLiteral("C1 3/0 red incomplete");
  }
  void aRowShowsABoxInTheColourOfItsState() {
    QFETCH(int, pick);
    QFETCH(int, order);
    TestProgram program;
    program.enterPicking();
    const BoxRecord box{QStringLiteral("C1"), order, pick, {}};
    show(program, {box, box});
    QTEST(rowOf(program, 0), "row");
    QTEST(rowOf(program, 1), "row");
  }

  void theCountersClassifyEveryBox() {
    TestProgram program;
    program.enterPicking();
    show(program,
         {BoxRecord{QStringLiteral("C1"), 5, 0, {}}, BoxRecord{QStringLiteral("C2"), 5, 5, {}},
          BoxRecord{QStringLiteral("C3"), 5, 7, {}}, BoxRecord{QStringLiteral("C4"), 5, 2, {}},
          BoxRecord{QStringLiteral("C5"), 0, 0, {}}, BoxRecord{QStringLiteral("C6"), 5, 1, {}}});
    QCOMPARE(countersOf(program), QStringList({"6", "1", "2", "3"}));
    QCOMPARE(program.master().tblBoxes->rowCount(), 6);
  }

  void theCountersDoNotDependOnTheOpenBox() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 0}});
    program.master().tblBoxes->touchRow(1);
    program.master().updateBoxOverview();
    QCOMPARE(countersOf(program), QStringList({"2", "1", "1", "0"}));
  }

  void aLoosePickIsShownAsACompletedBoxWithoutQuantities() {
    TestProgram program;
    program.enterPicking();
    show(program, {BoxRecord{QStringLiteral("C1"), 5, 0, {}}, loosePick()});
    QCOMPARE(rowOf(program, 1), "1 0/0 green completed");
    QCOMPARE(countersOf(program), QStringList({"2", "1", "1", "0"}));
  }

  void aConfirmedQuantityRefreshesTheListAndTheCounters() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}});
    program.master().tblBoxes->touchRow(0);
    QCOMPARE(countersOf(program), QStringList({"2", "2", "0", "0"}));
    QSignalSpy redrawn(program.master().tblBoxes, &TableView::dataChanged);
    program.enterQuantity(0, QStringLiteral("3"));
    QTRY_COMPARE(redrawn.count(), 1);
    QCOMPARE(rowOf(program, 0), "C1 3/5 red incomplete");
    QCOMPARE(countersOf(program), QStringList({"2", "1", "0", "1"}));
    program.enterQuantity(0, QStringLiteral("2"));
    QCOMPARE(rowOf(program, 0), "C1 5/5 green completed");
    QCOMPARE(countersOf(program), QStringList({"2", "1", "1", "0"}));
  }

  void anImportRefreshesNeitherTheListNorTheCounters() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}});
    program.master().btnPickingTouched();
    program.service.answerWith(deliveryJson({{"C9", "A", 5}}));
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(program.master().tblBoxes->rowCount(), 2);
    QCOMPARE(countersOf(program), QStringList({"2", "2", "0", "0"}));
  }

  void aRowBeyondTheEndOfAShorterListIsEmpty() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}});
    program.master().btnPickingTouched();
    program.service.answerWith(deliveryJson({{"C9", "A", 5}}));
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(rowOf(program, 0), "C9 0/5 yellow unopened");
    QCOMPARE(rowOf(program, 1), " / clear ");
  }

  void stoppingAPickingRefreshesNeitherTheListNorTheCounters() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.detail().arrayPick()->emplace_back(loosePick());
    program.master().btnPickingTouched();
    QCOMPARE(program.master().tblBoxes->rowCount(), 1);
    QCOMPARE(countersOf(program), QStringList({"1", "1", "0", "0"}));
  }

  void scanningALoosePickRefreshesNeitherTheListNorTheCounters() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.detail().arrayPick()->emplace_back(loosePick());
    program.master().tblBoxes->touchRow(0);
    program.scan(QStringLiteral("X"));
    QCOMPARE(program.detail().arrayPick()->size(), 3U);
    QCOMPARE(program.master().tblBoxes->rowCount(), 1);
    QCOMPARE(countersOf(program), QStringList({"1", "1", "0", "0"}));
  }

  void theTableShowsTheWorkingListItself() {
    TestProgram program;
    program.enterPicking();
    show(program, {BoxRecord{QStringLiteral("C1"), 5, 0, {}}});
    std::get<BoxRecord>(program.detail().arrayPick()->at(0)).boxpickqty = 5;
    QCOMPARE(rowOf(program, 0), "C1 5/5 green completed");
  }

 private:
  /// Makes `list` the working list and shows it.
  static void show(const TestProgram &program, const PickList &list) {
    program.session().setArrayPick(std::make_shared<PickList>(list));
    program.master().QuantityChangedOnDetailView();
  }
};

CARTONPICK_TEST(masterViewControllerBoxesTest);
#include "masterViewControllerBoxes_test.moc"
