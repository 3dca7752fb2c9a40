#include "store/ManagedObjectContext.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

namespace {

const QString kSummary = QStringLiteral("deliveryDetailsViewController");

QString inSummary(const QString &name) {
  return kSummary + u'/' + name;
}

/// Starts a picking of four lines in two boxes and picks the first two lines.
void pickSome(TestWindow &ui) {
  ui.openBox({{"C1", "A", 5}, {"C1", "B", 5}, {"C1", "C", 5}, {"C2", "A", 1}});
  ui.openKeypad(0);
  ui.confirm("6");
  ui.openKeypad(1);
  ui.confirm("3");
}

void openOptions(TestWindow &ui) {
  ui.touch("btnOptions");
  QTRY_VERIFY(ui.shows("tableViewRow2"));
}

void openSummary(TestWindow &ui) {
  openOptions(ui);
  ui.touch("tableViewRow0");
  QTRY_VERIFY(ui.shows(kSummary));
}

}  // namespace

/// The action list, and the summary that it opens.
class OptionsAndSummaryUiTest : public QObject {
  Q_OBJECT

 private slots:
  void theOptionsCloseWhenTheTabletIsRotated() {
    TestWindow ui({1280, 800});
    pickSome(ui);
    openOptions(ui);
    ui.window().resize(800, 1280);
    QTRY_VERIFY(!ui.shows("tableViewRow0"));
    openOptions(ui);
    const QRectF button = TestWindow::visiblePart(ui.item("btnOptions"));
    QVERIFY(TestWindow::visiblePart(ui.item("tableViewRow0")).top() > button.bottom());
  }

  void theOptionsAreListedNextToTheirButton() {
    TestWindow ui;
    pickSome(ui);
    openOptions(ui);
    const QRectF button = TestWindow::visiblePart(ui.item("btnOptions"));
    const QRectF list = TestWindow::visiblePart(ui.item("actionPickerViewController"));
    QVERIFY(list.left() < button.right() && list.right() > button.left());
    QVERIFY(qAbs(list.top() - button.bottom()) < 30.0);
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList());
  }

  void touchingElsewhereClosesTheOptions() {
    TestWindow ui;
    pickSome(ui);
    openOptions(ui);
    ui.touchAt({400, 700});
    QTRY_VERIFY(!ui.shows("actionPickerViewController"));
    QVERIFY(!ui.shows("txtNewQty"));
    openOptions(ui);
  }

  void escapeClosesTheOptions() {
    TestWindow ui;
    pickSome(ui);
    openOptions(ui);
    ui.press(Qt::Key_Escape);
    QTRY_VERIFY(!ui.shows("actionPickerViewController"));
    QCOMPARE(ui.alerts(), QStringList());
    openOptions(ui);
  }

  void choosingAnOptionClosesTheOptions() {
    TestWindow ui;
    pickSome(ui);
    openOptions(ui);
    ui.touch("tableViewRow2");
    QTRY_VERIFY(!ui.shows("actionPickerViewController"));
    QCOMPARE(ui.alerts(),
             QStringList("Picking Completed?|Are you sure that picking is completed?|NO|YES"));
  }

  void answeringNoSendsNothing() {
    TestWindow ui;
    pickSome(ui);
    openOptions(ui);
    ui.touch("tableViewRow2");
    ui.touch("alertButton0");
    QTRY_COMPARE(ui.alerts(), QStringList());
    QCOMPARE(ui.service.requests().size(), 1);
    QCOMPARE(ui.store().unsentPickings("4711")->size(), 2U);
  }

  void escapeAnswersNo() {
    TestWindow ui;
    pickSome(ui);
    openOptions(ui);
    ui.touch("tableViewRow2");
    QTRY_COMPARE(ui.keyboard(), "alertButton0");
    ui.press(Qt::Key_Escape);
    QTRY_COMPARE(ui.alerts(), QStringList());
    QCOMPARE(ui.service.requests().size(), 1);
  }

  void answeringYesSendsThePicking() {
    TestWindow ui;
    pickSome(ui);
    ui.service.answerWith("\"0\"");
    openOptions(ui);
    ui.touch("tableViewRow2");
    ui.touch("alertButton1");
    QTRY_COMPARE(ui.store().unsentPickings("4711")->size(), 0U);
    QCOMPARE(ui.service.requests().size(), 2);
    QCOMPARE(ui.service.requests().last().method, "POST");
    QTRY_VERIFY(!ui.alerts().isEmpty());
  }

  void theSummaryShowsTheDelivery() {
    TestWindow ui;
    pickSome(ui);
    openSummary(ui);
    QCOMPARE(ui.text(inSummary("lblDelivery")), "Summary for Delivery: 4711");
    QCOMPARE(ui.colour(inSummary("lblDelivery")), ui.ink("red"));
    QTRY_COMPARE(ui.column("tblPicking", "item"), QStringList({"A", "B", "C"}));
    QTRY_COMPARE(ui.column("tblPicking", "pickqty"), QStringList({"6", "3", "0"}));
    QTRY_COMPARE(ui.column("tblPicking", "orderqty"), QStringList({"6", "5", "5"}));
    QTRY_COMPARE(ui.column("tblPicking", "diffqty"), QStringList({"0", "-2", "-5"}));
    QCOMPARE(ui.texts({"txtQtyPicked", "txtQtyOrder", "txtQtyDiff"}),
             QStringList({"9", "16", "-7"}));
  }

  void theSummarysFiltersDoNotChangeTheTotals() {
    TestWindow ui;
    pickSome(ui);
    openSummary(ui);
    const QList<QStringList> shown{{"A", "B", "C"}, {"C"}, {"B"}, {"A"}};
    for (int segment = 3; segment >= 0; --segment) {
      ui.touch(QStringLiteral("segmentedControlStatus%1").arg(segment));
      QTRY_COMPARE(ui.column("tblPicking", "item"), shown[segment]);
      QCOMPARE(ui.text("txtQtyPicked"), "9");
    }
  }

  void itemsUnderTheSummaryCannotBeTouched() {
    TestWindow ui;
    pickSome(ui);
    openSummary(ui);
    ui.touch("tblPickingRow0");
    ui.touch("lblDelivery");
    QVERIFY(!ui.shows("txtNewQty"));
    QVERIFY(!ui.isEnabled("txtBarcode"));
    QVERIFY(ui.shows(kSummary));
  }

  void aBoxOpenedBesideTheSummaryIsOpenWhenTheSummaryCloses() {
    TestWindow ui({1280, 800});
    pickSome(ui);
    openSummary(ui);
    ui.touch("tblBoxesRow1");
    QTRY_COMPARE(ui.text("lblOpenBox"), "C2");
    QVERIFY(ui.shows(kSummary));
    QCOMPARE(ui.text("txtQtyPicked"), "9");
    ui.touch(inSummary("btnClose"));
    QTRY_VERIFY(ui.isEnabled("txtBarcode"));
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList("A"));
    QCOMPARE(ui.texts({"lblTotalPick", "lblTotalOrder", "lblTotalDiff"}),
             QStringList({"0", "1", "-1"}));
  }

  void aPickingStoppedBesideTheSummaryIsStoppedWhenTheSummaryCloses() {
    TestWindow ui({1280, 800});
    pickSome(ui);
    openSummary(ui);
    ui.touch("btnPicking");
    QTRY_COMPARE(ui.text("btnPicking"), "Start Picking");
    QVERIFY(ui.shows(kSummary));
    QCOMPARE(ui.text("txtQtyPicked"), "9");
    ui.touch(inSummary("btnClose"));
    QTRY_VERIFY(!ui.shows(kSummary));
    QVERIFY(!ui.isEnabled("txtBarcode"));
    QVERIFY(!ui.isEnabled("btnOptions"));
    QVERIFY(!ui.shows("tblItemsRow0"));
    QCOMPARE(ui.texts({"lblTotalPick", "lblTotalOrder", "lblTotalDiff"}),
             QStringList({"-", "-", "-"}));
  }

  void closingTheSummaryReturnsToThePickingScreen() {
    TestWindow ui;
    pickSome(ui);
    openSummary(ui);
    ui.touch(inSummary("btnClose"));
    QTRY_VERIFY(!ui.shows(kSummary));
    QTRY_VERIFY(ui.isEnabled("txtBarcode"));
    ui.touch("txtBarcode");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    ui.scan("A");
    QTRY_COMPARE(ui.text("lblItemCode"), "A");
  }

  void escapeClosesTheSummary() {
    TestWindow ui;
    pickSome(ui);
    openSummary(ui);
    QTRY_COMPARE(ui.keyboard(), "btnClose");
    ui.press(Qt::Key_Escape);
    QTRY_VERIFY(!ui.shows(kSummary));
  }

  void aReopenedSummaryIsUnfiltered() {
    TestWindow ui;
    pickSome(ui);
    openSummary(ui);
    ui.touch("segmentedControlStatus1");
    ui.touch(inSummary("btnClose"));
    QTRY_VERIFY(ui.isEnabled("txtBarcode"));
    ui.openKeypad(2);
    ui.confirm("5");
    openSummary(ui);
    QTRY_COMPARE(ui.column("tblPicking", "pickqty"), QStringList({"6", "3", "5"}));
  }
};

CARTONPICK_WINDOW_TEST(OptionsAndSummaryUiTest);
#include "OptionsAndSummaryUi_test.moc"
