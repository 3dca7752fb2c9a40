#include "summary/pickTableCell.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QTest>

namespace {

/// Returns the item codes in the pick table.
QStringList itemsOf(const TestProgram &program) {
  QStringList items;
  const TableView &table = *program.detail().tblItems;
  for (int row = 0; row < table.rowCount(); ++row) {
    items << cellAt<pickTableCell>(table, row).item.text;
  }
  return items;
}

/// A program whose open box has a line for each pair of picked and ordered quantities. The items
/// are A, B, C and so on.
class OpenBox : public TestProgram {
 public:
  explicit OpenBox(const QList<std::pair<int, int>> &quantities) {
    enterPicking();
    BoxRecord box{QStringLiteral("C1"), 0, 0, {}};
    for (const auto &[pickqty, orderqty] : quantities) {
      const QString item(QChar(static_cast<char16_t>(u'A' + box.boxitems.size())));
      box.boxitems.push_back({.barcode = u'b' + item,
                              .descr = QStringLiteral("Description of ") + item,
                              .item = item,
                              .orderqty = orderqty,
                              .pickqty = pickqty});
    }
    session().setArrayPick(std::make_shared<PickList>(PickList{box}));
    master().btnPickingTouched();
    master().tblBoxes->touchRow(0);
  }

  [[nodiscard]] BoxLine &line(std::size_t position) const {
    return std::get<BoxRecord>(detail().arrayPick()->front()).boxitems.at(position);
  }
};

}  // namespace

/// The pick table and its filter.
class detailViewControllerTableTest : public QObject {
  Q_OBJECT

 private slots:
  void withoutAnOpenBoxThereIsOnlyTheHeader() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    detailViewController &detail = program.detail();
    for (int segment = 0; segment < 4; ++segment) {
      detail.segmentedControl->touchSegment(segment);
      QCOMPARE(detail.tblItems->numberOfRows(), 0);
    }
    QVERIFY(!detail.cellForRowAtIndexPath(*detail.tblItems, 0).isValid());
    QCOMPARE(headerOf<pickTableCell>(*detail.tblItems).item.text, "Item Code");
  }

  void withoutAWorkingListThereAreNoRows() {
    TestProgram program;
    program.enterPicking();
    program.session().openBox(0);
    QCOMPARE(program.detail().tblItems->numberOfRows(), 0);
  }

  void aSegmentFiltersTheLines_data() {
    QTest::addColumn<int>("segment");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("all") << 0 << QStringList{"A", "B", "C", "D", "E"};
    QTest::newRow("not picked") << 1 << QStringList{"A", "C"};
    QTest::newRow("different") << 2 << QStringList{"A", "D", "E"};
    QTest::newRow("matching") << 3 << QStringList{"B", "C"};
    QTest::newRow("any higher index") << 4 << QStringList{"B", "C"};
  }
  void aSegmentFiltersTheLines() {
    QFETCH(int, segment);
    OpenBox program({{0, 5}, {5, 5}, {0, 0}, {3, 2}, {1, 2}});
    // Segment 0 is initially selected, so touch another segment first.
    program.detail().segmentedControl->touchSegment(2);
    program.detail().segmentedControl->touchSegment(segment);
    QTEST(itemsOf(program), "items");
  }

  void onlyTouchingASegmentReloadsTheTable() {
    OpenBox program({{0, 5}, {5, 5}});
    program.detail().segmentedControl->setSelectedSegmentIndex(1);
    QCOMPARE(program.detail().tblItems->rowCount(), 2);
    program.detail().segmentedControlValueChanged();
    QCOMPARE(program.detail().tblItems->rowCount(), 1);
  }

  void theRowsAreCountedOnEveryCall() {
    OpenBox program({{0, 5}, {0, 5}});
    program.detail().segmentedControl->touchSegment(1);
    QCOMPARE(program.detail().tblItems->numberOfRows(), 2);
    program.line(0).pickqty = 1;
    QCOMPARE(program.detail().tblItems->numberOfRows(), 1);
    QCOMPARE(cellAt<pickTableCell>(*program.detail().tblItems, 0).item.text, "B");
  }

  void theSectionNumberIsIgnored() {
    OpenBox program({{0, 5}, {0, 5}});
    detailViewController &detail = program.detail();
    QCOMPARE(detail.numberOfSectionsInTableView(*detail.tblItems), 1);
    QCOMPARE(detail.numberOfRowsInSection(*detail.tblItems, 0), 2);
    QCOMPARE(detail.numberOfRowsInSection(*detail.tblItems, 1), 2);
  }

  void aRowShowsALine_data() {
    QTest::addColumn<int>("pickqty");
    QTest::addColumn<int>("orderqty");
    QTest::addColumn<QString>("difference");
    QTest::addColumn<QString>("colour");
    const QString red = QStringLiteral("red");
    const QString green = QStringLiteral("green");
    QTest::newRow("matching") << 5 << 5 << QStringLiteral("0") << green;
    QTest::newRow("not picked") << 0 << 5 << QStringLiteral("-5") << red;
    QTest::newRow("more than ordered") << 3 << 2 << QStringLiteral("1") << red;
    QTest::newRow("no quantities") << 0 << 0 << QStringLiteral("0") << green;
  }
  void aRowShowsALine() {
    QFETCH(int, pickqty);
    QFETCH(int, orderqty);
    const OpenBox program({{pickqty, orderqty}});
    const auto cell = cellAt<pickTableCell>(*program.detail().tblItems, 0);
    QCOMPARE(QStringList({cell.item.text, cell.barcode.text, cell.descr.text, cell.pickqty.text,
                          cell.orderqty.text}),
             QStringList({"A", "bA", "Description of A", QString::number(pickqty),
                          QString::number(orderqty)}));
    QTEST(cell.diffqty.text, "difference");
    QTEST(cell.diffqty.textColorName(), "colour");
  }

  void aDeliveredQuantityIsShownAsANumber() {
    OpenBox program({{0, 5}});
    program.line(0).orderqty = Quantity::delivered(QStringLiteral(" 7 pieces"));
    QCOMPARE(cellAt<pickTableCell>(*program.detail().tblItems, 0).orderqty.text, "7");
  }

  void rowColoursAlternateByVisibleIndex() {
    OpenBox program({{5, 5}, {0, 5}, {0, 5}});
    const TableView &table = *program.detail().tblItems;
    QCOMPARE(cellAt<pickTableCell>(table, 0).backgroundColor, Colour::lightGrey);
    QCOMPARE(cellAt<pickTableCell>(table, 1).backgroundColor, Colour::clear);
    QCOMPARE(cellAt<pickTableCell>(table, 2).backgroundColor, Colour::lightGrey);
    program.detail().segmentedControl->touchSegment(1);
    QCOMPARE(cellAt<pickTableCell>(table, 0).item.text, "B");
    QCOMPARE(cellAt<pickTableCell>(table, 0).backgroundColor, Colour::lightGrey);
  }

  void theHeaderNamesTheColumns() {
    const OpenBox program({});
    const auto header = headerOf<pickTableCell>(*program.detail().tblItems);
    QCOMPARE(QStringList({header.item.text, header.barcode.text, header.descr.text,
                          header.pickqty.text, header.orderqty.text, header.diffqty.text}),
             QStringList({"Item Code", "Barcode", "Description", "Pick", "Order", "Diff"}));
    QCOMPARE(header.backgroundColor, Colour::darkGrey);
  }

  void rowsAndHeaderAreFiftyFourPointsHigh() {
    const OpenBox program({{0, 5}});
    QCOMPARE(program.detail().tblItems->rowHeight(), 54.0);
    QCOMPARE(program.detail().tblItems->headerHeight(), 54.0);
  }

  void rowsCannotBeEdited() {
    OpenBox program({{0, 5}});
    detailViewController &detail = program.detail();
    QCOMPARE(detail.editingStyleForRowAtIndexPath(*detail.tblItems, 0),
             TableViewDataSource::EditingStyle::None);
    QVERIFY(detail.tblItems->isEnabled());
  }

  void loosePicksHaveNoRows() {
    OpenBox program({{0, 5}});
    program.detail().arrayPick()->emplace_back(LoosePick{.item = QStringLiteral("X")});
    program.detail().tblItems->reloadData();
    QCOMPARE(itemsOf(program), QStringList("A"));
    program.session().openBox(1);
    program.detail().tblItems->reloadData();
    QCOMPARE(itemsOf(program), QStringList());
  }

  void touchingARowOpensTheKeypadForItsLine() {
    OpenBox program({{5, 5}, {0, 5}, {0, 5}});
    program.detail().segmentedControl->touchSegment(1);
    program.detail().tblItems->touchRow(1);
    QCOMPARE(program.keypad()->row(), 1);
    QCOMPARE(program.keypad()->lblItemCode->text(), "C");
  }
};

CARTONPICK_TEST(detailViewControllerTableTest);
#include "detailViewControllerTable_test.moc"
