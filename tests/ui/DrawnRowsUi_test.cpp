#include "store/ManagedObjectContext.h"
#include "support/Picture.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QQuickItem>
#include <QTest>

#include <cstdlib>

namespace {

const QString kBlueGround = QStringLiteral("#dfe9fb");
const QString kBlueBorder = QStringLiteral("#1550b8");
constexpr int kBlueBorderWidth = 3;

/// Four boxes: not opened, complete without quantities, partly picked, not opened.
const QList<TestLine> kBoxes{{"C1", "A", 5}, {"C2", "B", 0}, {"C3", "C", 3}, {"C4", "D", 2}};

/// Stores the pick of one piece of `item` in box `box`.
void storePick(TestWindow &ui, const QString &box, const QString &item,
               const QString &doc = QStringLiteral("4711")) {
  ui.store().insert(Picking{.barcode = u'b' + item,
                            .box = box,
                            .datepicked = ui.clock->now(),
                            .doc = doc,
                            .item = item,
                            .ordernum = QStringLiteral("A1"),
                            .orderqty = 3,
                            .pickqty = 1});
  QVERIFY(!ui.store().save());
}

/// `count` lines in one box, or in a box each.
QList<TestLine> manyLines(int count, bool isOneBox) {
  QList<TestLine> lines;
  for (int i = 0; i < count; ++i) {
    lines.append({isOneBox ? QStringLiteral("C") : QStringLiteral("C%1").arg(i),
                  QStringLiteral("I%1").arg(i), 1});
  }
  return lines;
}

QString rowOf(const QString &table, int row) {
  return QStringLiteral("%1Row%2").arg(table).arg(row);
}

/// The left end of a row: the stripe of a box, then only the background.
Picture leftEndOf(const TestWindow &ui, const QString &name) {
  return Picture(ui, name).left(20);
}

/// Returns true if the row is drawn with the blue mark.
bool isBlue(const TestWindow &ui, const QString &row) {
  const Picture end = leftEndOf(ui, row);
  return end.topBorder(kBlueBorder) == kBlueBorderWidth && end.ground() == kBlueGround;
}

/// The rows from 0 to 3 of `table` that are drawn with the blue mark.
QList<int> blueRows(const TestWindow &ui, const QString &table) {
  QList<int> rows;
  for (int row = 0; row < 4 && ui.shows(rowOf(table, row)); ++row) {
    if (isBlue(ui, rowOf(table, row))) {
      rows.append(row);
    }
  }
  return rows;
}

/// The distance in pixels from the middle of `list` to that of the blue row in it.
int offsetOfBlueRow(const TestWindow &ui, const QString &list) {
  const QImage pixels = leftEndOf(ui, list).pixels();
  QList<int> blue;
  for (int y = 0; y < pixels.height(); ++y) {
    if (pixels.pixelColor(pixels.width() / 2, y) == QColor(kBlueBorder)) {
      blue.append(y);
    }
  }
  return blue.isEmpty() ? pixels.height()
                        : std::abs(blue.first() + blue.last() - pixels.height()) / 2;
}

/// Opens the history and the summary of its first delivery, which has `lines` lines.
void openSummary(TestWindow &ui, int lines) {
  for (int i = 0; i < lines; ++i) {
    storePick(ui, QStringLiteral("C1"), QStringLiteral("I%1").arg(i));
  }
  ui.touch(QStringLiteral("btnSegueHistory"));
  ui.touch(QStringLiteral("tblHistoryOverviewRow0"));
  QTRY_VERIFY(ui.isEnabled(QStringLiteral("tblPickingRow0")));
}

}  // namespace

/// What the rows of the tables look like in the light theme.
class DrawnRowsUiTest : public QObject {
  Q_OBJECT

 private slots:
  void aBoxRowShowsItsStateByColourIconAndWord_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("ground");
    QTest::addColumn<QString>("ink");
    QTest::addColumn<bool>("isLeftHalfFilled");
    QTest::addColumn<bool>("isRightHalfFilled");
    QTest::newRow("unopened") << 0 << "#fff0c4"
                              << "#6d4a00" << false << false;
    QTest::newRow("completed") << 1 << "#d8f1e0"
                               << "#0b6430" << true << true;
    QTest::newRow("incomplete") << 2 << "#fbe1de"
                                << "#a81e19" << true << false;
  }
  void aBoxRowShowsItsStateByColourIconAndWord() {
    QFETCH(int, row);
    QFETCH(QString, ground);
    QFETCH(QString, ink);
    TestWindow ui;
    storePick(ui, QStringLiteral("C3"), QStringLiteral("C"));
    ui.startPicking(kBoxes);
    const QString name = rowOf(QStringLiteral("tblBoxes"), row);
    QTRY_COMPARE(Picture(ui, name).ground(), ground);
    QCOMPARE(Picture(ui, name).left(8).ground(), ink);
    QCOMPARE(ui.text(name + "/state"), QTest::currentDataTag());
    QCOMPARE(Picture(ui, name + "/state").ink(), ink);
    const Picture icon(ui, name + "/stateIcon");
    QCOMPARE(QSet({icon.ground(), icon.ink()}), QSet({ground, ink}));
    const int size = icon.pixels().width();
    const QRect leftHalf(size * 3 / 10, size * 3 / 10, size / 5, size * 2 / 5);
    const QRect rightHalf = leftHalf.translated(size / 5, 0);
    QTEST(icon.part(leftHalf).inked(ink, ground) > 0.3, "isLeftHalfFilled");
    QTEST(icon.part(rightHalf).inked(ink, ground) > 0.3, "isRightHalfFilled");
  }

  void boxRowsOfOneStateHaveOneColour() {
    TestWindow ui;
    ui.startPicking(manyLines(3, false));
    for (const int row : {0, 1, 2}) {
      QTRY_COMPARE(Picture(ui, rowOf("tblBoxes", row)).ground(), "#fff0c4");
    }
  }

  void theTouchedBoxIsBlue() {
    TestWindow ui;
    ui.openBox(kBoxes, 1);
    QTRY_COMPARE(blueRows(ui, "tblBoxes"), QList({1}));
    ui.touch("tblBoxesRow3");
    QTRY_COMPARE(blueRows(ui, "tblBoxes"), QList({3}));
  }

  void theFoundBoxIsBlueUntilAnotherIsTouched() {
    TestWindow ui;
    ui.startPicking(kBoxes);
    ui.scan("C3");
    QTRY_COMPARE(blueRows(ui, "tblBoxes"), QList({2}));
    ui.touch("tblBoxesRow0");
    QTRY_COMPARE(blueRows(ui, "tblBoxes"), QList({0}));
  }

  void theOpenBoxIsBlueAfterAQuantityIsSaved() {
    TestWindow ui;
    ui.openBox(kBoxes, 1);
    ui.openKeypad();
    ui.confirm("1");
    QTRY_COMPARE(blueRows(ui, "tblBoxes"), QList({1}));
  }

  void theLineOfACancelledKeypadIsBlue() {
    TestWindow ui;
    ui.openBox(manyLines(3, true));
    ui.openKeypad(1);
    ui.touch("btnCancel");
    QTRY_COMPARE(blueRows(ui, "tblItems"), QList({1}));
  }

  void theTouchedDeliveryIsBlue() {
    TestWindow ui;
    openSummary(ui, 1);
    QTRY_COMPARE(blueRows(ui, "tblHistoryOverview"), QList({0}));
  }

  void theChosenActionIsBlueWhenTheOptionsOpenAgain() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.touch("btnOptions");
    ui.touch("tableViewRow2");
    ui.touch("alertButton0");
    ui.touch("btnOptions");
    QTRY_COMPARE(blueRows(ui, "tableView"), QList({2}));
  }

  void theRowsOfAPickTableAlternateUnderADarkHeader() {
    TestWindow ui;
    ui.openBox(manyLines(3, true));
    expectAlternatingRows(ui, "tblItems");
  }

  void theRowsOfASummaryAlternateUnderADarkHeader() {
    TestWindow ui;
    openSummary(ui, 3);
    expectAlternatingRows(ui, "tblPicking");
  }

  void theRowsOfTheHistoryAlternateUnderADarkHeader() {
    TestWindow ui;
    for (const char *doc : {"4711", "4712", "4713"}) {
      storePick(ui, "C1", "A", doc);
    }
    ui.touch("btnSegueHistory");
    expectAlternatingRows(ui, "tblHistoryOverview");
  }

  void boxesAndDeliveriesHaveADisclosureSignAndHeadersHaveNone() {
    TestWindow ui;
    storePick(ui, "C1", "A");
    ui.touch("btnSegueHistory");
    QTRY_COMPARE(Picture(ui, "tblHistoryOverviewRow0").right(40).ink(), "#46535f");
    QCOMPARE(Picture(ui, "tblHistoryOverviewHeader").right(40).ink(), "#35424f");
    ui.touch("btnBack");
    ui.openBox(kBoxes);
    QTRY_COMPARE(Picture(ui, "tblBoxesRow1").right(40).ink(), "#46535f");
    QCOMPARE(Picture(ui, "tblItemsHeader").right(14).ink(), "#35424f");
  }

  void theFoundBoxIsInTheMiddleOfTheList() {
    TestWindow ui;
    ui.startPicking(manyLines(60, false));
    ui.scan("C30");
    QTRY_VERIFY(ui.shows("tblBoxesRow30") && isBlue(ui, "tblBoxesRow30"));
    QCOMPARE_LE(offsetOfBlueRow(ui, "tblBoxes"), 1);
  }

  void theScannedLineIsInTheMiddleOfTheTable() {
    TestWindow ui;
    ui.openBox(manyLines(60, true));
    ui.scan("I30");
    ui.touch("btnCancel");
    QTRY_VERIFY(ui.shows("tblItemsRow30") && isBlue(ui, "tblItemsRow30"));
    QCOMPARE_LE(offsetOfBlueRow(ui, "tblItems"), 1);
  }

  void aTableScrolledToItsTopShowsItsFirstRowAtTheTop() {
    TestWindow ui;
    openSummary(ui, 60);
    auto *table = ui.item("tblPicking")->property("outlet").value<TableView *>();
    table->selectRow(30);
    QTRY_VERIFY(ui.shows("tblPickingRow30"));
    table->scrollToTop();
    QTRY_VERIFY(ui.shows("tblPickingRow0"));
    QCOMPARE(TestWindow::visiblePart(ui.item("tblPickingRow0")).top(),
             TestWindow::visiblePart(ui.item("tblPicking")).top());
    QCOMPARE(Picture(ui, "tblPicking").part({0, 0, 100, 10}).ground(), "#f1f4f8");
  }

 private:
  static void expectAlternatingRows(const TestWindow &ui, const QString &table) {
    QTRY_COMPARE(Picture(ui, rowOf(table, 0)).ground(), "#f1f4f8");
    QCOMPARE(Picture(ui, rowOf(table, 1)).ground(), "#ffffff");
    QCOMPARE(Picture(ui, rowOf(table, 2)).ground(), "#f1f4f8");
    const Picture header(ui, table + "Header");
    QCOMPARE(header.ground(), "#35424f");
    QCOMPARE(header.ink(), "#ffffff");
  }
};

CARTONPICK_WINDOW_TEST(DrawnRowsUiTest);
#include "DrawnRowsUi_test.moc"
