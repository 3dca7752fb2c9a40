#include "store/ManagedObjectContext.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QPointingDevice>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

namespace {

const QList<TestLine> kBoxes{{"C1", "A", 5}, {"C1", "B", 2}, {"C2", "A", 3}, {"C3", "D", 0}};

QStringList totals(const TestWindow &ui) {
  return ui.texts({"lblTotalPick", "lblTotalOrder", "lblTotalDiff"});
}

QStringList counters(const TestWindow &ui) {
  return ui.texts({"lblBoxesTotalValue", "lblBoxesUnopenedValue", "lblBoxesCompletedValue",
                   "lblBoxesIncompleteValue"});
}

QColor groundOf(const TestWindow &ui, const QString &row) {
  return ui.item(row)->property("ground").value<QColor>();
}

/// Whether each row of the box list is marked.
QList<bool> marks(const TestWindow &ui) {
  QList<bool> marks;
  for (int row = 0; ui.shows(QStringLiteral("tblBoxesRow%1").arg(row)); ++row) {
    marks.append(ui.item(QStringLiteral("tblBoxesRow%1").arg(row))->property("isMarked").toBool());
  }
  return marks;
}

/// Flicks the item `name` upwards, and waits until it stops moving.
void flick(TestWindow &ui, const QString &name) {
  static QPointingDevice *finger = QTest::createTouchDevice();
  const QPoint from = ui.item(name)->mapToScene(ui.item(name)->boundingRect().center()).toPoint();
  constexpr int kSteps = 5;
  constexpr int kStepPixels = 20;
  ui.passQuietTime();
  QTest::touchEvent(&ui.window(), finger).press(0, from);
  for (int step = 1; step <= kSteps; ++step) {
    QTest::touchEvent(&ui.window(), finger).move(0, from - QPoint(0, kStepPixels * step));
    // Qt merges the touch moves between two frames.
    ui.settle();
  }
  QTest::touchEvent(&ui.window(), finger).release(0, from - QPoint(0, kSteps * kStepPixels));
  QTRY_VERIFY(!ui.item(name)->property("moving").toBool());
}

}  // namespace

/// Starting and stopping a picking, and opening its boxes.
class OpenBoxesUiTest : public QObject {
  Q_OBJECT

 private slots:
  void startingAPickingShowsTheBoxesAndTheirStates() {
    TestWindow ui;
    ui.startPicking(kBoxes);
    QTRY_COMPARE(ui.column("tblBoxes", "lblBox"), QStringList({"C1", "C2", "C3"}));
    QTRY_COMPARE(ui.column("tblBoxes", "lblPickQty"), QStringList({"0", "0", "0"}));
    QTRY_COMPARE(ui.column("tblBoxes", "lblOrderQty"), QStringList({"7", "3", "0"}));
    QCOMPARE(groundOf(ui, "tblBoxesRow0"), ui.ground("yellow"));
    QCOMPARE(groundOf(ui, "tblBoxesRow2"), ui.ground("green"));
    QCOMPARE(counters(ui), QStringList({"3", "2", "1", "0"}));
    QCOMPARE(totals(ui), QStringList({"-", "-", "-"}));
    QCOMPARE(ui.text("lblScanState"), "Open a box first");
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtBox"));
  }

  void aRunningPickingDisablesTheSearch() {
    TestWindow ui;
    ui.startPicking(kBoxes);
    QCOMPARE(ui.text("btnPicking"), "Stop Picking");
    for (const char *locked : {"txtDeliveryNo", "btnSearch", "btnClose"}) {
      QVERIFY2(!ui.isEnabled(locked), locked);
    }
    ui.touch("btnSearch");
    ui.touch("btnClose");
    ui.touch("txtDeliveryNo");
    QCOMPARE(ui.service.requests().size(), 1);
    QCOMPARE(ui.alerts(), QStringList());
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtBox"));
    for (const char *open : {"txtBox", "txtBarcode", "btnOptions", "tblBoxesRow0", "btnPicking"}) {
      QVERIFY2(ui.isEnabled(open), open);
    }
  }

  void withoutAPickingTheScanControlsAreDisabled() {
    TestWindow ui;
    ui.enterPicking();
    for (const char *locked : {"txtBox", "txtBarcode", "btnOptions", "btnPicking"}) {
      QVERIFY2(!ui.isEnabled(locked), locked);
    }
    ui.touch("txtBarcode");
    ui.touch("btnOptions");
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtDeliveryNo"));
    QVERIFY(!ui.shows("actionPickerViewController"));
  }

  void touchingARowOpensItsBox() {
    TestWindow ui;
    ui.startPicking(kBoxes);
    ui.touch("tblBoxesRow0");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    QCOMPARE(totals(ui), QStringList({"0", "7", "-7"}));
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList({"A", "B"}));
    QTRY_COMPARE(ui.column("tblItems", "orderqty"), QStringList({"5", "2"}));
    QTRY_COMPARE(ui.column("tblItems", "diffqty"), QStringList({"-5", "-2"}));
    QCOMPARE(ui.colour("tblItemsRow0/diffqty"), ui.ink("red"));
    QCOMPARE(ui.text("lblScanState"), "Ready to scan");
  }

  void clickingAnotherRowOpensItsBoxInstead() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.click("tblBoxesRow1");
    QTRY_COMPARE(totals(ui), QStringList({"0", "3", "-3"}));
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList("A"));
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
  }

  void scanningABoxIdentifierOpensTheBox() {
    TestWindow ui;
    ui.startPicking(kBoxes);
    ui.scan("C2");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    QCOMPARE(totals(ui), QStringList({"0", "3", "-3"}));
    QCOMPARE(ui.text("txtBox"), "C2");
    QVERIFY(ui.item("tblBoxesRow1")->property("isMarked").toBool());
  }

  void theOpenBoxStaysMarkedAfterAQuantityIsSaved() {
    TestWindow ui;
    ui.openBox(kBoxes, 1);
    ui.openKeypad();
    ui.confirm("1");
    QTRY_COMPARE(ui.text("tblBoxesRow1/lblPickQty"), "1");
    QCOMPARE(marks(ui), QList<bool>({false, true, false}));
  }

  void onlyTheOpenBoxIsMarkedAfterAnotherOneWasTyped() {
    TestWindow ui;
    ui.startPicking(kBoxes);
    ui.type("C2");
    ui.press(Qt::Key_Return);
    QTRY_COMPARE(marks(ui), QList<bool>({false, true, false}));
    ui.touch("tblBoxesRow0");
    QTRY_COMPARE(ui.text("lblOpenBox"), "C1");
    QCOMPARE(marks(ui), QList<bool>({true, false, false}));
    ui.openKeypad();
    ui.confirm("1");
    QCOMPARE(marks(ui), QList<bool>({true, false, false}));
  }

  void theDeliveryIsNamedDuringThePicking_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("textSize");
    QTest::newRow("landscape") << QSize(1280, 800) << 100;
    QTest::newRow("portrait") << QSize(800, 1280) << 100;
    QTest::newRow("small") << QSize(800, 600) << 100;
    QTest::newRow("large text") << QSize(1280, 800) << 200;
  }

  void theDeliveryIsNamedDuringThePicking() {
    QFETCH(const QSize, size);
    QFETCH(const int, textSize);
    TestWindow ui(size);
    ui.startPicking(kBoxes);
    ui.touch("btnPicking");
    QTRY_VERIFY(!ui.shows("lblPickedDelivery"));
    ui.touch("txtDeliveryNo");
    ui.press(Qt::Key_A, Qt::ControlModifier);
    ui.type("0815");
    ui.touch("btnPicking");
    QTRY_COMPARE(ui.text("lblPickedDelivery"), "Delivery 4711");
    ui.environment.display->setTextSize(textSize);
    ui.settle();
    QVERIFY(!ui.item("lblPickedDelivery")->property("truncated").toBool());
    QVERIFY(TestWindow::visiblePart(ui.item("lblPickedDelivery")).height() >= 18);
  }

  void lineBreaksAndTabsInNamesAreShownAsBlanks() {
    TestWindow ui;
    ui.openBox({{"C\n1", "A\tB", 5}});
    QTRY_COMPARE(ui.texts({"tblBoxesRow0/lblBox", "lblOpenBox", "tblItemsRow0/item",
                           "tblItemsRow0/barcode", "tblItemsRow0/descr"}),
                 QStringList({"C 1", "C 1", "A B", "bA B", "Description of A B"}));
    ui.openKeypad();
    QCOMPARE(ui.text("lblItemCode"), "A B");
    ui.confirm("5");
    QCOMPARE(ui.text("lblSaved"), "Saved 5 × A B in box C 1, 10:12:05");
    QCOMPARE(ui.store().pickings("4711")->front().box, "C\n1");
    QCOMPARE(ui.store().pickings("4711")->front().item, "A\tB");
  }

  void anUnknownBoxIdentifierIsRefused() {
    TestWindow ui;
    ui.startPicking(kBoxes);
    ui.type("c2");
    ui.press(Qt::Key_Return);
    QTRY_COMPARE(ui.alerts(), QStringList("No Box Found||OK"));
    ui.touch("alertButton0");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBox"));
    QCOMPARE(ui.text("txtBox"), "c2");
    QCOMPARE(ui.text("lblScanState"), "Open a box first");
  }

  void stoppingAPickingDisablesScanningAndFocusesTheDeliveryNumber() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.touch("btnPicking");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtDeliveryNo"));
    QCOMPARE(ui.text("btnPicking"), "Start Picking");
    QCOMPARE(totals(ui), QStringList({"-", "-", "-"}));
    QVERIFY(!ui.shows("tblItemsRow0"));
    QTRY_COMPARE(ui.column("tblBoxes", "lblBox"), QStringList({"C1", "C2", "C3"}));
    for (const char *locked : {"txtBox", "txtBarcode", "btnOptions", "tblBoxesRow0"}) {
      QVERIFY2(!ui.isEnabled(locked), locked);
    }
    ui.touch("tblBoxesRow0");
    QCOMPARE(totals(ui), QStringList({"-", "-", "-"}));
  }

  void restartingAPickingOpensNoBox() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.touch("btnPicking");
    ui.touch("btnPicking");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBox"));
    QCOMPARE(ui.text("lblScanState"), "Open a box first");
    QVERIFY(!ui.shows("tblItemsRow0"));
  }

  void quantitiesAreRestoredAfterARestart() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.openKeypad(1);
    ui.confirm("2");
    ui.openKeypad(0);
    ui.confirm("4");
    ui.restart();
    ui.openBox(kBoxes);
    QTRY_COMPARE(ui.column("tblItems", "pickqty"), QStringList({"4", "2"}));
    QCOMPARE(totals(ui), QStringList({"6", "7", "-1"}));
    QCOMPARE(counters(ui), QStringList({"3", "1", "1", "1"}));
    QCOMPARE(groundOf(ui, "tblBoxesRow0"), ui.ground("red"));
  }

  void pickedQuantitiesSurviveLeavingThePickingScreen() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.openKeypad(1);
    ui.confirm("2");
    ui.touch("btnPicking");
    ui.touch("btnClose");
    ui.touch("alertButton0");
    ui.openBox(kBoxes);
    QTRY_COMPARE(ui.column("tblItems", "pickqty"), QStringList({"0", "2"}));
    QCOMPARE(ui.store().pickings("4711")->size(), 1U);
  }

  void theBoxListScrollsOnlyWhileAPickingIsRunning() {
    QList<TestLine> boxes;
    for (int i = 0; i < 60; ++i) {
      boxes.append({QStringLiteral("C%1").arg(i), "A", 1});
    }
    TestWindow ui;
    ui.startPicking(boxes);
    QTRY_VERIFY(ui.shows("tblBoxesRow0"));
    flick(ui, "tblBoxes");
    const double scrolled = ui.item("tblBoxes")->property("contentY").toDouble();
    QVERIFY(scrolled > 0.0);
    ui.touch("btnPicking");
    flick(ui, "tblBoxes");
    QCOMPARE(ui.item("tblBoxes")->property("contentY").toDouble(), scrolled);
  }
};

CARTONPICK_WINDOW_TEST(OpenBoxesUiTest);
#include "OpenBoxesUi_test.moc"
