#include "store/ManagedObjectContext.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QQuickItem>
#include <QTest>

namespace {

/// Opens a box and picks its lines: not at all, short, matching and over.
void openPickedBox(TestWindow &ui) {
  ui.openBox({{"C1", "A", 5}, {"C1", "B", 5}, {"C1", "C", 5}, {"C1", "D", 5}});
  int row = 1;
  for (const char *quantity : {"3", "5", "7"}) {
    ui.openKeypad(row++);
    ui.confirm(quantity);
  }
}

void touchSegment(TestWindow &ui, int segment) {
  ui.touch(QStringLiteral("segmentedControl%1").arg(segment));
}

}  // namespace

/// The filters of the pick table, and corrections in a filtered table.
class PickFilterUiTest : public QObject {
  Q_OBJECT

 private slots:
  void theSegmentsNameTheFilters() {
    TestWindow ui;
    ui.enterPicking();
    QCOMPARE(ui.texts({"segmentedControl0", "segmentedControl1", "segmentedControl2",
                       "segmentedControl3"}),
             QStringList({"All", "Not picked", "Different", "Matching"}));
  }

  void everySegmentShowsTheMatchingLines() {
    TestWindow ui;
    openPickedBox(ui);
    touchSegment(ui, 1);
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList("A"));
    touchSegment(ui, 2);
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList({"A", "B", "D"}));
    touchSegment(ui, 3);
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList("C"));
    touchSegment(ui, 0);
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList({"A", "B", "C", "D"}));
  }

  void differencesHaveASignAndAColour() {
    TestWindow ui;
    openPickedBox(ui);
    QTRY_COMPARE(ui.column("tblItems", "diffqty"), QStringList({"-5", "-2", "0", "2"}));
    QCOMPARE(ui.colour("tblItemsRow1/diffqty"), ui.ink("red"));
    QCOMPARE(ui.colour("tblItemsRow2/diffqty"), ui.ink("green"));
    QCOMPARE(ui.colour("tblItemsRow3/diffqty"), ui.ink("red"));
  }

  void touchingAFilterDoesNotMoveTheFocus() {
    TestWindow ui;
    openPickedBox(ui);
    ui.touch("segmentedControl1");
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList("A"));
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
  }

  void aFilterWithoutMatchingLinesShowsNoRows() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    ui.touch("segmentedControl3");
    QTRY_VERIFY(!ui.shows("tblItemsRow0"));
  }

  void aCorrectionWithAFilterIsBookedToTheShownLine() {
    TestWindow ui;
    openPickedBox(ui);
    touchSegment(ui, 2);
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList({"A", "B", "D"}));
    ui.openKeypad(2);
    QCOMPARE(ui.text("lblItemCode"), "D");
    ui.confirm("-2");
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList({"A", "B"}));
    touchSegment(ui, 3);
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList({"C", "D"}));
    QCOMPARE(ui.store().pickingsOfLine("4711", "C1", "D")->front().pickqty, 5);
    QCOMPARE(ui.text("lblTotalPick"), "13");
  }

  void theRowThatMovesUpIsMarked() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}, {"C1", "B", 5}});
    ui.touch("segmentedControl1");
    ui.openKeypad(0);
    ui.confirm("5");
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList("B"));
    QVERIFY(ui.item("tblItemsRow0")->property("isMarked").toBool());
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
  }

  void aScanShowsAllLinesAgain() {
    TestWindow ui;
    openPickedBox(ui);
    ui.touch("segmentedControl3");
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList("C"));
    ui.scan("bB");
    QTRY_COMPARE(ui.text("lblItemCode"), "B");
    ui.press(Qt::Key_Escape);
    QTRY_COMPARE(ui.column("tblItems", "item").size(), 4);
  }
};

CARTONPICK_WINDOW_TEST(PickFilterUiTest);
#include "PickFilterUi_test.moc"
