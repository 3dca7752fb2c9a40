#include "view/outlets/TableView.h"

#include "support/TestClass.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

/// Provides numbers as cells, and records the rows that were requested or touched.
class Numbers : public QObject, public TableViewDataSource {
 public:
  explicit Numbers(int count) : m_count(count) {}

  int numberOfRowsInSection(const TableView & /*table*/, int /*section*/) override {
    return m_count;
  }
  QVariant cellForRowAtIndexPath(const TableView & /*table*/, int row) override {
    m_requested.append(row);
    return row * 10;
  }
  QVariant viewForHeaderInSection(const TableView & /*table*/, int /*section*/) override {
    return QStringLiteral("Numbers");
  }
  double heightForRowAtIndexPath(const TableView & /*table*/, int /*row*/) override { return 56.0; }
  double heightForHeaderInSection(const TableView & /*table*/, int /*section*/) override {
    return 30.0;
  }
  void didSelectRowAtIndexPath(TableView & /*table*/, int row) override { m_touched.append(row); }

  void setCount(int count) { m_count = count; }
  [[nodiscard]] const QList<int> &requested() const { return m_requested; }
  [[nodiscard]] const QList<int> &touched() const { return m_touched; }

 private:
  int m_count;
  QList<int> m_requested;
  QList<int> m_touched;
};

/// A loaded table of `count` numbers.
struct NumbersTable {
  explicit NumbersTable(int count) : numbers(count) {
    table.setDataSource(&numbers);
    table.reloadData();
  }

  Numbers numbers;
  TableView table{"tblNumbers", nullptr};
  QAbstractItemModelTester tester{&table, QAbstractItemModelTester::FailureReportingMode::QtTest};
};

QVariant cellAt(const TableView &table, int row) {
  return table.data(table.index(row), TableView::CellRole);
}

}  // namespace

class TableViewTest : public QObject {
  Q_OBJECT

 private slots:
  void aTableWithoutADataSourceIsEmpty() {
    TableView table("tblNumbers", nullptr);
    table.reloadData();
    QCOMPARE(table.rowCount(), 0);
    QCOMPARE(table.numberOfRows(), 0);
    QVERIFY(!table.header().isValid());
    QCOMPARE(table.rowHeight(), 0.0);
    QCOMPARE(table.headerHeight(), 0.0);
  }

  void theRowCountIsUpdatedByAReload() {
    NumbersTable shown(3);
    shown.numbers.setCount(5);
    QCOMPARE(shown.table.rowCount(), 3);
    QCOMPARE(shown.table.numberOfRows(), 5);
    shown.table.reloadData();
    QCOMPARE(shown.table.rowCount(), 5);
  }

  void aReloadAddsAndRemovesRowsAtTheEndAndRedrawsAllRows() {
    NumbersTable shown(3);
    const QSignalSpy reset(&shown.table, &TableView::modelReset);
    const QSignalSpy redrawn(&shown.table, &TableView::dataChanged);
    shown.numbers.setCount(5);
    shown.table.reloadData();
    QCOMPARE(shown.table.rowCount(), 5);
    QTRY_COMPARE(redrawn.size(), 1);
    QCOMPARE(redrawn.at(0).at(0).toModelIndex().row(), 0);
    QCOMPARE(redrawn.at(0).at(1).toModelIndex().row(), 4);
    shown.numbers.setCount(1);
    shown.table.reloadData();
    QCOMPARE(shown.table.rowCount(), 1);
    QTRY_COMPARE(redrawn.size(), 2);
    QCOMPARE(redrawn.at(1).at(1).toModelIndex().row(), 0);
    QCOMPARE(reset.size(), 0);
  }

  void consecutiveReloadsRedrawOnce() {
    NumbersTable shown(3);
    QCoreApplication::processEvents();
    const QSignalSpy redrawn(&shown.table, &TableView::dataChanged);
    shown.table.reloadData();
    shown.table.reloadData();
    QCOMPARE(redrawn.size(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(redrawn.size(), 1);
  }

  void aReloadWithoutRowsEmptiesTheTable() {
    NumbersTable shown(3);
    shown.numbers.setCount(0);
    shown.table.reloadData();
    QCOMPARE(shown.table.rowCount(), 0);
    QVERIFY(!cellAt(shown.table, 0).isValid());
  }

  void cellsAreRequestedOnlyWhenNeeded() {
    Numbers numbers(1'000'000);
    TableView table("tblNumbers", nullptr);
    table.setDataSource(&numbers);
    table.reloadData();
    QVERIFY(numbers.requested().isEmpty());
    QCOMPARE(cellAt(table, 7), 70);
    QCOMPARE(cellAt(table, 7), 70);
    QCOMPARE(numbers.requested(), QList({7, 7}));
  }

  void aMissingRowHasNoCell() {
    const NumbersTable shown(3);
    QVERIFY(!cellAt(shown.table, 3).isValid());
    QVERIFY(!cellAt(shown.table, -1).isValid());
    QVERIFY(!shown.table.data(shown.table.index(0), Qt::DisplayRole).isValid());
  }

  void theHeaderAndTheHeightsComeFromTheDataSource() {
    const NumbersTable shown(3);
    QCOMPARE(shown.table.header(), "Numbers");
    QCOMPARE(shown.table.rowHeight(), 56.0);
    QCOMPARE(shown.table.headerHeight(), 30.0);
  }

  void aTouchSelectsTheRow() {
    NumbersTable shown(3);
    const QSignalSpy selectionChanged(&shown.table, &TableView::selectionChanged);
    shown.table.touchRow(2);
    QCOMPARE(shown.table.selectedRow(), 2);
    QCOMPARE(shown.numbers.touched(), QList({2}));
    QCOMPARE(selectionChanged.size(), 1);
  }

  void touchingADisabledTableDoesNothing() {
    NumbersTable shown(3);
    shown.table.setEnabled(false);
    shown.table.touchRow(2);
    QCOMPARE(shown.table.selectedRow(), -1);
    QVERIFY(shown.numbers.touched().isEmpty());
    shown.table.setEnabled(true);
    shown.table.touchRow(2);
    QCOMPARE(shown.numbers.touched(), QList({2}));
  }

  void touchingAMissingRowDoesNothing() {
    NumbersTable shown(3);
    shown.table.touchRow(3);
    shown.table.touchRow(-1);
    QCOMPARE(shown.table.selectedRow(), -1);
    QVERIFY(shown.numbers.touched().isEmpty());
  }

  void selectingARowScrollsToIt() {
    NumbersTable shown(3);
    const QSignalSpy scrolled(&shown.table, &TableView::scrolledToRow);
    shown.table.selectRow(1);
    QCOMPARE(shown.table.selectedRow(), 1);
    QCOMPARE(scrolled.size(), 1);
    QCOMPARE(scrolled.at(0).at(0), 1);
    QVERIFY(shown.numbers.touched().isEmpty());
  }

  void selectingAMissingRowDoesNothing() {
    NumbersTable shown(3);
    const QSignalSpy scrolled(&shown.table, &TableView::scrolledToRow);
    shown.table.selectRow(3);
    shown.table.selectRow(-1);
    QCOMPARE(shown.table.selectedRow(), -1);
    QCOMPARE(scrolled.size(), 0);
  }

  void onlyAnExistingRowCanBePainted() {
    NumbersTable shown(3);
    QCOMPARE(shown.table.paintedRow(), -1);
    shown.table.paintRow(1);
    QCOMPARE(shown.table.paintedRow(), 1);
    shown.table.paintRow(3);
    QCOMPARE(shown.table.paintedRow(), 1);
  }

  void aReloadClearsTheSelectionAndThePaintedRow() {
    NumbersTable shown(3);
    shown.table.selectRow(1);
    shown.table.paintRow(2);
    const QSignalSpy selectionChanged(&shown.table, &TableView::selectionChanged);
    shown.table.reloadData();
    QCOMPARE(shown.table.selectedRow(), -1);
    QCOMPARE(shown.table.paintedRow(), -1);
    QVERIFY(!selectionChanged.isEmpty());
  }

  void scrollToTopIsSignalled() {
    NumbersTable shown(3);
    const QSignalSpy scrolled(&shown.table, &TableView::scrolledToTop);
    shown.table.scrollToTop();
    QCOMPARE(scrolled.size(), 1);
  }

  void disablingATableTwiceIsSignalledOnce() {
    NumbersTable shown(3);
    const QSignalSpy changed(&shown.table, &TableView::changed);
    shown.table.setEnabled(false);
    shown.table.setEnabled(false);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(shown.table.property("enabled"), false);
  }

  void aTableOutlivesItsDataSource() {
    auto numbers = std::make_unique<Numbers>(3);
    TableView table("tblNumbers", nullptr);
    table.setDataSource(numbers.get());
    table.reloadData();
    numbers.reset();
    QVERIFY(!cellAt(table, 0).isValid());
    table.touchRow(0);
    QCOMPARE(table.selectedRow(), -1);
    table.reloadData();
    QCOMPARE(table.rowCount(), 0);
  }

  void byDefaultATableCannotBeEdited() {
    NumbersTable shown(3);
    QVERIFY(!shown.numbers.canEditRowAtIndexPath(shown.table, 0));
    QCOMPARE(shown.numbers.editingStyleForRowAtIndexPath(shown.table, 0),
             TableViewDataSource::EditingStyle::None);
    QCOMPARE(shown.numbers.numberOfSectionsInTableView(shown.table), 1);
  }

  void aTableThatDoesNotAllowSelectionIgnoresTouches() {
    NumbersTable shown(3);
    shown.table.setAllowsSelection(false);
    shown.table.touchRow(1);
    QCOMPARE(shown.numbers.touched(), QList<int>());
    QCOMPARE(shown.table.selectedRow(), -1);
    QVERIFY(shown.table.isEnabled());
  }
};

CARTONPICK_TEST(TableViewTest);
#include "TableView_test.moc"
