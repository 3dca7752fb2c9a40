#include "summary/deliveryDetailsViewController.h"

#include "summary/pickTableCell.h"
#include "support/TestClass.h"
#include "support/TestEnvironment.h"
#include "support/Views.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

namespace {

BoxLine lineOf(const QString &item, int pickqty, int orderqty,
               const QString &doc = QStringLiteral("4711")) {
  return {.barcode = u'b' + item,
          .descr = QStringLiteral("Description of ") + item,
          .doc = doc,
          .item = item,
          .orderqty = orderqty,
          .pickqty = pickqty};
}

/// A summary and the screen that it covers.
class Summary : public TestEnvironment {
 public:
  Summary() : opener({}, environment), screen(environment) {}

  void show(const ItemLines &lines) {
    screen.setArrayItems(std::make_shared<const ItemLines>(lines));
    opener.addSubview(&screen, ViewController::Flip::FromLeft);
  }

  /// Returns the item codes in the table.
  [[nodiscard]] QStringList items() const {
    QStringList items;
    for (int row = 0; row < screen.tblPicking->rowCount(); ++row) {
      items << cellAt<pickTableCell>(*screen.tblPicking, row).item.text;
    }
    return items;
  }

  [[nodiscard]] QStringList totals() const {
    return textsOf({screen.txtQtyPicked, screen.txtQtyOrder, screen.txtQtyDiff});
  }

  ViewController opener;
  deliveryDetailsViewController screen;
};

const ItemLines kLines{lineOf(QStringLiteral("A"), 0, 5), lineOf(QStringLiteral("B"), 3, 5),
                       lineOf(QStringLiteral("C"), 5, 5), lineOf(QStringLiteral("D"), 7, 5)};

}  // namespace

class deliveryDetailsViewControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void theTitleShowsTheDeliveryNumberInRed() {
    Summary summary;
    summary.show(kLines);
    QCOMPARE(summary.screen.lblDelivery->text(), "Summary for Delivery: 4711");
    QCOMPARE(summary.screen.lblDelivery->textColor(), Colour::red);
  }

  void showsTheTotalsOfTheDelivery() {
    Summary summary;
    summary.show(kLines);
    QCOMPARE(summary.totals(), QStringList({"15", "20", "-5"}));
  }

  void totalsWrapAround() {
    Summary summary;
    const int maximum = std::numeric_limits<int>::max();
    summary.show({lineOf(QStringLiteral("A"), maximum, 0), lineOf(QStringLiteral("B"), 1, 0)});
    QCOMPARE(summary.totals(), QStringList({"-2147483648", "0", "-2147483648"}));
  }

  void showsEveryLineAtFirst() {
    Summary summary;
    summary.show(kLines);
    QCOMPARE(summary.screen.segmentedControlStatus->selectedSegmentIndex(), 0);
    QCOMPARE(summary.items(), QStringList({"A", "B", "C", "D"}));
  }

  void startsAtTheTop() {
    Summary summary;
    QSignalSpy scrolled(summary.screen.tblPicking, &TableView::scrolledToTop);
    summary.show(kLines);
    QCOMPARE(scrolled.count(), 1);
  }

  void aSegmentFiltersTheLines_data() {
    QTest::addColumn<int>("segment");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("all") << 0 << QStringList{"A", "B", "C", "D", "E"};
    QTest::newRow("not picked") << 1 << QStringList{"A", "E"};
    QTest::newRow("different") << 2 << QStringList{"B", "D"};
    QTest::newRow("matching") << 3 << QStringList{"C", "E"};
    QTest::newRow("any higher index") << 4 << QStringList{"C", "E"};
  }
  void aSegmentFiltersTheLines() {
    QFETCH(int, segment);
    Summary summary;
    ItemLines lines = kLines;
    lines.push_back(lineOf(QStringLiteral("E"), 0, 0));
    summary.show(lines);
    const QStringList totals = summary.totals();
    // Segment 0 is initially selected, so touch another segment first.
    summary.screen.segmentedControlStatus->touchSegment(2);
    summary.screen.segmentedControlStatus->touchSegment(segment);
    QTEST(summary.items(), "items");
    QCOMPARE(summary.totals(), totals);
  }

  void everyFilterSegmentHasATitle() {
    const Summary summary;
    QCOMPARE(summary.screen.segmentedControlStatus->titles(),
             QStringList({"All", "Not picked", "Different", "Matching"}));
  }

  void aRowShowsALine_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("quantities");
    QTest::addColumn<QString>("colour");
    QTest::addColumn<QString>("background");
    const QString red = QStringLiteral("red");
    const QString green = QStringLiteral("green");
    const QString grey = QStringLiteral("lightGrey");
    const QString clear = QStringLiteral("clear");
    QTest::newRow("not picked") << 0 << QStringList{"0", "5", "-5"} << red << grey;
    QTest::newRow("short") << 1 << QStringList{"3", "5", "-2"} << red << clear;
    QTest::newRow("matching") << 2 << QStringList{"5", "5", "0"} << green << grey;
    QTest::newRow("more than ordered") << 3 << QStringList{"7", "5", "2"} << red << clear;
  }
  void aRowShowsALine() {
    QFETCH(int, row);
    Summary summary;
    summary.show(kLines);
    const auto cell = cellAt<pickTableCell>(*summary.screen.tblPicking, row);
    QTEST(QStringList({cell.pickqty.text, cell.orderqty.text, cell.diffqty.text}), "quantities");
    QTEST(cell.diffqty.textColorName(), "colour");
    QTEST(cell.backgroundColorName(), "background");
    const QString item = kLines.at(static_cast<std::size_t>(row)).item;
    QCOMPARE(cell.barcode.text, u'b' + item);
    QCOMPARE(cell.descr.text, "Description of " + item);
  }

  void rowColoursOfAFilteredListAlternateByVisibleIndex() {
    Summary summary;
    summary.show(kLines);
    summary.screen.segmentedControlStatus->touchSegment(2);
    const TableView &table = *summary.screen.tblPicking;
    QCOMPARE(cellAt<pickTableCell>(table, 0).backgroundColor, Colour::lightGrey);
    QCOMPARE(cellAt<pickTableCell>(table, 1).backgroundColor, Colour::clear);
  }

  void aLineWithoutQuantitiesHasAGreenZero() {
    Summary summary;
    summary.show({lineOf(QStringLiteral("A"), 0, 0)});
    const auto cell = cellAt<pickTableCell>(*summary.screen.tblPicking, 0);
    QCOMPARE(cell.diffqty.text, "0");
    QCOMPARE(cell.diffqty.textColor, Colour::green);
  }

  void theHeaderNamesTheColumns() {
    Summary summary;
    summary.show(kLines);
    const auto header = headerOf<pickTableCell>(*summary.screen.tblPicking);
    QCOMPARE(QStringList({header.item.text, header.barcode.text, header.descr.text,
                          header.pickqty.text, header.orderqty.text, header.diffqty.text}),
             QStringList({"Item Code", "Barcode", "Description", "Pick", "Order", "Diff"}));
    QCOMPARE(header.backgroundColor, Colour::darkGrey);
  }

  void rowsAndHeaderAreFiftyFourPointsHigh() {
    Summary summary;
    summary.show(kLines);
    QCOMPARE(summary.screen.tblPicking->rowHeight(), 54.0);
    QCOMPARE(summary.screen.tblPicking->headerHeight(), 54.0);
  }

  void hasOneSection() {
    Summary summary;
    summary.show(kLines);
    const TableView &table = *summary.screen.tblPicking;
    QCOMPARE(summary.screen.numberOfSectionsInTableView(table), 1);
    QCOMPARE(summary.screen.numberOfRowsInSection(table, 0), 4);
    QCOMPARE(summary.screen.numberOfRowsInSection(table, 1), 0);
  }

  void touchingARowDoesNothing() {
    Summary summary;
    summary.show(kLines);
    QVERIFY(summary.screen.tblPicking->isEnabled());
    summary.screen.tblPicking->touchRow(1);
    QCOMPARE(summary.screen.tblPicking->selectedRow(), -1);
    summary.screen.commitEditingStyle(*summary.screen.tblPicking,
                                      TableViewDataSource::EditingStyle::Delete, 1);
    summary.screen.CloseViewControllerWithGetQtyAtRow(1, 2, 3);
    QCOMPARE(summary.screen.presentedViewController(), nullptr);
    QCOMPARE(summary.items(), QStringList({"A", "B", "C", "D"}));
    QCOMPARE(summary.totals(), QStringList({"15", "20", "-5"}));
  }

  void closingFlipsTheSummaryAway() {
    Summary summary;
    summary.show(kLines);
    QSignalSpy flips(&summary.opener, &ViewController::flipped);
    summary.screen.btnCloseTouched();
    QCOMPARE(summary.opener.overlay(), nullptr);
    QCOMPARE(flips.count(), 1);
    QCOMPARE(flips.at(0).at(0).value<ViewController *>(), &summary.screen);
    QCOMPARE(flips.at(0).at(2).toBool(), false);
    QCOMPARE(summary.opener.flipMilliseconds(), 800);
  }

  void aReopenedSummaryShowsTheNewLinesUnfiltered() {
    Summary summary;
    summary.show(kLines);
    summary.screen.segmentedControlStatus->touchSegment(3);
    summary.screen.btnCloseTouched();
    summary.show({lineOf(QStringLiteral("Z"), 1, 4, QStringLiteral("0815"))});
    QCOMPARE(summary.screen.lblDelivery->text(), "Summary for Delivery: 0815");
    QCOMPARE(summary.screen.segmentedControlStatus->selectedSegmentIndex(), 0);
    QCOMPARE(summary.items(), QStringList("Z"));
    QCOMPARE(summary.totals(), QStringList({"1", "4", "-3"}));
  }

  void withoutLinesTheTitleHasNoDeliveryNumber() {
    Summary summary;
    summary.show({});
    QCOMPARE(summary.screen.lblDelivery->text(), "Summary for Delivery: ");
    QCOMPARE(summary.screen.tblPicking->rowCount(), 0);
    QCOMPARE(summary.totals(), QStringList({"0", "0", "0"}));
  }
};

CARTONPICK_TEST(deliveryDetailsViewControllerTest);
#include "deliveryDetailsViewController_test.moc"
