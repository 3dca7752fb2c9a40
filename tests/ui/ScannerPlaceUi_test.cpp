#include "store/ManagedObjectContext.h"
#include "support/StoredArticles.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

namespace {

const QString kEan = QStringLiteral("5012345678900");
const QList<TestLine> kBoxes{{"C1", "85123A", 6, kEan}, {"C1", "71053", 2}, {"C 2", "84406B", 8}};
const std::vector<int> kErrorTone{1005};

/// Opens the summary of a picking whose first box is open.
void openSummary(TestWindow &ui) {
  ui.openBox(kBoxes);
  ui.touch("btnOptions");
  ui.touch("tableViewRow0");
  QTRY_COMPARE(ui.keyboard(), "btnClose");
  ui.settle();
}

}  // namespace

/// Which control receives a scan, and which controls refuse it.
class ScannerPlaceUiTest : public QObject {
  Q_OBJECT

 private slots:
  void theKeypadRefusesAScanWithTheErrorTone() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.openKeypad(0);
    ui.type("12");
    ui.press(Qt::Key_Home, Qt::ShiftModifier);
    ui.scan(kEan);
    QTRY_COMPARE(ui.sounds->played(), kErrorTone);
    QCOMPARE(ui.text("txtNewQty"), "12");
    QCOMPARE(ui.text("lblTotalQty"), "12");
    QCOMPARE(ui.item("txtNewQty")->property("selectedText").toString(), "12");
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
    QVERIFY(ui.store().pickingsOfLine("4711", "C1", "85123A")->empty());
    ui.touch("btnOK");
    QTRY_COMPARE(ui.text("tblItemsRow0/pickqty"), "12");
  }

  void aSecondScanIsRefusedUntilTheQuantityIsEntered() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.scan(kEan);
    ui.scan("71053");
    QTRY_COMPARE(ui.sounds->played(), kErrorTone);
    QCOMPARE(ui.text("lblItemCode"), "85123A");
    QCOMPARE(ui.text("txtNewQty"), "");
  }

  void aScanDoesNotAnswerAnAlert_data() {
    QTest::addColumn<QString>("code");
    QTest::newRow("digits") << kEan;
    QTest::newRow("spaces, which press buttons") << "C  2  ";
    QTest::newRow("leading space") << " C2";
  }

  void aScanDoesNotAnswerAnAlert() {
    QFETCH(const QString, code);
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.touch("btnOptions");
    ui.touch("tableViewRow2");
    QTRY_COMPARE(ui.alerts().size(), 1);
    ui.touch("alertButton0");
    QTRY_COMPARE(ui.alerts().size(), 0);
    ui.touch("btnOptions");
    ui.touch("tableViewRow2");
    QTRY_COMPARE(ui.keyboard(), "alertButton0");
    const auto requests = ui.service.requests().size();
    ui.scan(code);
    QTRY_COMPARE(ui.sounds->played(), kErrorTone);
    QCOMPARE(ui.alerts(),
             QStringList("Picking Completed?|Are you sure that picking is completed?|NO|YES"));
    QCOMPARE(ui.keyboard(), "alertButton0");
    QCOMPARE(ui.service.requests().size(), requests);
  }

  void aScanDoesNotChooseAnOption() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.touch("btnOptions");
    QTRY_VERIFY(ui.shows("tableViewRow0"));
    ui.scan("C 2");
    QTRY_COMPARE(ui.sounds->played(), kErrorTone);
    QVERIFY(ui.shows("tableViewRow0"));
    QVERIFY(!ui.shows("deliveryDetailsViewController"));
  }

  void theStartScreenRefusesAScan() {
    TestWindow ui;
    QTRY_COMPARE(ui.keyboard(), "btnSegueToSplitView");
    ui.scan("47 11");
    QTRY_COMPARE(ui.sounds->played(), kErrorTone);
    QVERIFY(ui.shows("btnSegueHistory"));
    QVERIFY(!ui.shows("splitViewController"));
  }

  void theSummaryRefusesAScan() {
    TestWindow ui;
    openSummary(ui);
    ui.scan("85 123");
    QTRY_COMPARE(ui.sounds->played(), kErrorTone);
    QVERIFY(ui.shows("deliveryDetailsViewController"));
  }

  void underTheSummaryAScanIntoTheBoxFieldOpensTheBox() {
    TestWindow ui;
    openSummary(ui);
    ui.touch("txtBox");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBox"));
    ui.scan("C 2");
    QTRY_COMPARE(ui.text("lblOpenBox"), "C 2");
    QCOMPARE(ui.text("txtBox"), "C 2");
    QVERIFY(ui.shows("deliveryDetailsViewController"));
    QVERIFY(ui.sounds->played().empty());
    ui.scan(kEan);
    QTRY_COMPARE(ui.sounds->played(), kErrorTone);
    ui.touch("deliveryDetailsViewController/btnClose");
    QTRY_COMPARE(ui.column("tblItems", "item"), QStringList("84406B"));
    QCOMPARE(ui.text("txtBarcode"), "");
  }

  void underTheSummaryAScanIntoTheDeliveryFieldFillsIt() {
    TestWindow ui;
    openSummary(ui);
    ui.touch("btnPicking");
    ui.touch("txtDeliveryNo");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtDeliveryNo"));
    ui.scan("0815");
    QTRY_COMPARE(ui.text("txtDeliveryNo"), "0815");
    QVERIFY(ui.shows("deliveryDetailsViewController"));
    QVERIFY(ui.sounds->played().empty());
    QCOMPARE(ui.alerts(), QStringList());
  }

  void withAnOpenBoxAScanGoesToTheScanFieldEvenIfAButtonIsFocused() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.item("segmentedControl1")->forceActiveFocus();
    QCOMPARE(ui.keyboard(), "segmentedControl1");
    ui.scan(kEan);
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
    QCOMPARE(ui.text("lblItemCode"), "85123A");
    QVERIFY(ui.sounds->played().empty());
  }

  void withoutAnOpenBoxAScanGoesToTheBoxFieldFromAnyButton() {
    TestWindow ui;
    ui.startPicking(kBoxes);
    ui.item("segmentedControl1")->forceActiveFocus();
    QCOMPARE(ui.keyboard(), "segmentedControl1");
    ui.scan("C 2");
    QTRY_COMPARE(ui.text("lblOpenBox"), "C 2");
    QCOMPARE(ui.text("txtBox"), "C 2");
    QCOMPARE(ui.text("txtBarcode"), "");
  }

  void withoutAnOpenBoxAScanIntoTheFocusedItemFieldStaysThere() {
    TestWindow ui;
    ui.startPicking(kBoxes);
    ui.touch("txtBarcode");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    for (const QString &code : {QStringLiteral("C 2"), kEan}) {
      ui.scan(code);
      QTRY_COMPARE(ui.text("txtBarcode"), code);
    }
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    QCOMPARE(ui.text("txtBox"), "");
    QCOMPARE(ui.text("lblOpenBox"), "-");
    QCOMPARE(ui.text("lblScanState"), "Open a box first");
    QCOMPARE(ui.alerts(), QStringList());
    QVERIFY(ui.sounds->played().empty());
  }

  void theSignDrawsAttentionWhenACodeNeedsAnOpenBox() {
    TestWindow ui;
    ui.startPicking(kBoxes);
    ui.touch("txtBarcode");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    const QQuickItem *sign = ui.item("pill");
    const QSignalSpy growths(sign, &QQuickItem::scaleChanged);
    ui.scan(kEan);
    QTRY_VERIFY(growths.count() > 1);
    QTRY_COMPARE(sign->scale(), 1.0);
    ui.touch("tblBoxesRow0");
    QTRY_COMPARE(ui.text("lblScanState"), "Ready to scan");
    const qsizetype before = growths.count();
    ui.scan(kEan);
    QTRY_COMPARE(ui.text("lblItemCode"), "85123A");
    QCOMPARE(growths.count(), before);
  }

  void aScanReplacesTheTextInTheField() {
    TestWindow ui;
    ui.startPicking(kBoxes);
    ui.scan("C1");
    QTRY_COMPARE(ui.text("lblOpenBox"), "C1");
    ui.touch("txtBox");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBox"));
    ui.scan("C 2");
    QTRY_COMPARE(ui.text("lblOpenBox"), "C 2");
    QCOMPARE(ui.alerts(), QStringList());
  }

  void aTouchIsHandledAfterTheKeysTypedBeforeIt() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.openKeypad(0);
    const QPoint ok = ui.item("btnOK")->mapToScene({40, 40}).toPoint();
    // The touch follows so soon that the key may still be held back.
    QTest::keyClick(&ui.window(), Qt::Key_4);
    ui.touchAt(ok);
    QTRY_COMPARE(ui.text("tblItemsRow0/pickqty"), "4");
  }

  void aTouchDuringAScanConfirmsTheQuantityEnteredBeforeIt() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.openKeypad(1);
    ui.type("2");
    const QPoint ok = ui.item("btnOK")->mapToScene({40, 40}).toPoint();
    ui.scanPart(kEan.left(5));
    ui.touchAt(ok);
    ui.scanPart(kEan.mid(5) + u'\r');
    QTRY_COMPARE(ui.text("tblItemsRow1/pickqty"), "2");
    QTRY_COMPARE(ui.text("lblItemCode"), "85123A");
    QCOMPARE(ui.text("txtNewQty"), "");
  }

  void keysTypedBeforeATouchAreNotPartOfALaterScan() {
    TestWindow ui;
    ui.service.answerWith(deliveryJson(kBoxes));
    ui.enterPicking();
    ui.scanPart("4711");
    ui.touch("btnSearch");
    QTRY_VERIFY(ui.isEnabled("btnPicking") && !ui.shows("busy"));
    ui.touch("btnPicking");
    ui.touch("tblBoxesRow0");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    ui.scan(kEan);
    QTRY_COMPARE(ui.text("lblItemCode"), "85123A");
    QCOMPARE(ui.alerts(), QStringList());
  }

  void theKeypadRefusesACodeWithoutReturn_data() {
    QTest::addColumn<QString>("end");
    QTest::newRow("no suffix") << "";
    QTest::newRow("Tab as the suffix") << "\t";
  }

  void theKeypadRefusesACodeWithoutReturn() {
    QFETCH(const QString, end);
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.openKeypad(0);
    ui.type("1");
    ui.scanPart(kEan + end);
    QTRY_COMPARE(ui.sounds->played(), kErrorTone);
    QCOMPARE(ui.text("txtNewQty"), "1");
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
    ui.press(Qt::Key_Escape);
    ui.touch("pill");
    QTRY_COMPARE(ui.column("tblScans", "code"), QStringList(kEan));
  }

  void theKeypadRefusesAScanAfterAnotherWindowHadTheFocus() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.openKeypad(0);
    ui.switchToAnotherWindowAndBack();
    ui.scan("71053");
    QTRY_COMPARE(ui.sounds->played(), kErrorTone);
    QCOMPARE(ui.text("lblItemCode"), "85123A");
  }

  void typedDigitsAreEnteredOnTheKeypad() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.openKeypad(0);
    ui.type("1");
    ui.press(Qt::Key_Return);
    ui.type("2");
    QCOMPARE(ui.text("txtNewQty"), "12");
    QVERIFY(ui.sounds->played().empty());
  }

  void aPasteIsNotAScan() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.openKeypad(0);
    ui.type("34");
    ui.press(Qt::Key_A, Qt::ControlModifier);
    ui.press(Qt::Key_C, Qt::ControlModifier);
    ui.press(Qt::Key_End);
    ui.press(Qt::Key_V, Qt::ControlModifier);
    ui.press(Qt::Key_Return);
    QCOMPARE(ui.text("txtNewQty"), "3434");
    QVERIFY(ui.sounds->played().empty());
  }

  void onScreenKeysAreNotAScan() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.openKeypad(0);
    for (const QString &digit : QStringList({"1", "2", "3"})) {
      ui.touch("btn" + digit);
    }
    ui.commitByInputMethod("4");
    ui.press(Qt::Key_Return);
    QCOMPARE(ui.text("txtNewQty"), "1234");
    QVERIFY(ui.sounds->played().empty());
  }

  void theScanTrailShowsTheOutcomeOfEachScan() {
    TestWindow ui;
    addArticle(ui.storePath(), {"29007", "22423", "METAL LANTERN"});
    ui.openBox(kBoxes);
    ui.scan(kEan);
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
    ui.scan("0815");
    QTRY_COMPARE(ui.sounds->played().size(), std::size_t{1});
    ui.confirm("6");
    ui.scan("71053");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
    ui.touch("btnCancel");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    ui.scan("4000000000000");
    ui.touch("alertButton0");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    ui.scan("29007");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
    ui.touch("btnCancel");
    ui.touch("pill");
    QTRY_COMPARE(ui.column("tblScans", "code"),
                 QStringList({"29007", "4000000000000", "71053", "0815", kEan}));
    QCOMPARE(
        ui.column("tblScans", "outcome"),
        QStringList({"Loose", "Unknown", "Line 2, not booked", "Refused", "Booked to line 1"}));
    QCOMPARE(ui.text("tblScansRow0/time"), "10:12:05");
    ui.scan("71053");
    QTRY_COMPARE(ui.text("tblScansRow0/outcome"), "Refused");
    ui.press(Qt::Key_Escape);
    QTRY_VERIFY(!ui.shows("tblScansRow0"));
  }

  void aNewPickingHasAnEmptyScanTrailAndKeepsTheScreenOn() {
    TestWindow ui;
    ui.openBox(kBoxes);
    ui.scan("4000000000000");
    ui.touch("alertButton0");
    ui.touch("btnPicking");
    QVERIFY(!ui.wakeLock->isHeld());
    ui.touch("btnPicking");
    ui.touch("pill");
    QTRY_VERIFY(ui.shows("ScanTrailViewController"));
    QVERIFY(!ui.shows("tblScansRow0"));
    QVERIFY(ui.wakeLock->isHeld());
    ui.restart();
    QVERIFY(!ui.wakeLock->isHeld());
  }
};

CARTONPICK_WINDOW_TEST(ScannerPlaceUiTest);
#include "ScannerPlaceUi_test.moc"
