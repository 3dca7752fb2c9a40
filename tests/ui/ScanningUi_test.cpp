#include "store/ManagedObjectContext.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QTest>

namespace {

const QString kEan = QStringLiteral("5012345678900");
const QList<TestLine> kBox{{"C1", "85123A", 6, kEan}, {"C1", "71053", 2}};

}  // namespace

/// Picking with a scanner in keyboard mode.
class ScanningUiTest : public QObject {
  Q_OBJECT

 private slots:
  void aScannedBarcodeIsReceivedCompletely() {
    TestWindow ui;
    ui.openBox(kBox);
    ui.scan(kEan);
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
    QCOMPARE(ui.text("lblItemBarcode"), kEan);
    QCOMPARE(ui.text("txtNewQty"), "");
    QCOMPARE(ui.text("txtBarcode"), "");
  }

  void aScannedItemCodeIsFound() {
    TestWindow ui;
    ui.openBox(kBox);
    ui.scan("71053");
    QTRY_COMPARE(ui.text("lblItemCode"), "71053");
  }

  void consecutiveScansNeedNoTouchOnTheScanField() {
    TestWindow ui;
    ui.openBox(kBox);
    for (const QString &code : {kEan, QStringLiteral("71053"), kEan}) {
      ui.scan(code);
      QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
      ui.confirm("1");
      QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    }
    QTRY_COMPARE(ui.column("tblItems", "pickqty"), QStringList({"2", "1"}));
    QCOMPARE(ui.store().pickingsOfLine("4711", "C1", "85123A")->front().pickqty, 2);
  }

  void anUnknownCodeIsRefusedWithTheErrorTone() {
    TestWindow ui;
    ui.openBox(kBox);
    ui.scan("4000000000000");
    QTRY_COMPARE(ui.alerts(), QStringList("Unknown Item|Item 4000000000000 not found!|OK"));
    QCOMPARE(ui.sounds->played(), std::vector<int>({1005}));
    QCOMPARE(ui.text("txtBarcode"), "");
    ui.touch("alertButton0");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    ui.scan(kEan);
    QTRY_COMPARE(ui.text("lblItemCode"), "85123A");
  }

  void aScanDoesNotAnswerAnAlert() {
    TestWindow ui;
    ui.openBox(kBox);
    ui.scan("4000000000000");
    QTRY_COMPARE(ui.alerts().size(), 1);
    ui.scan(kEan);
    QCOMPARE(ui.alerts().size(), 1);
    QVERIFY(!ui.shows("txtNewQty"));
  }

  void withoutAnOpenBoxATypedCodeStaysInTheField() {
    TestWindow ui;
    ui.startPicking(kBox);
    ui.touch("txtBarcode");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    ui.type(kEan);
    ui.press(Qt::Key_Return);
    QCOMPARE(ui.text("txtBarcode"), kEan);
    QVERIFY(!ui.shows("txtNewQty"));
    QCOMPARE(ui.alerts(), QStringList());
    QCOMPARE(ui.text("lblScanState"), "Open a box first");
  }

  void aCompleteBoxIsPickedByScannerAndKeypad() {
    TestWindow ui;
    ui.startPicking(kBox);
    ui.scan("C1");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    ui.scan(kEan);
    ui.confirm("6");
    ui.scan("71053");
    ui.confirm("2");
    QTRY_COMPARE(ui.text("lblBoxesCompletedValue"), "1");
    QCOMPARE(ui.texts({"lblTotalPick", "lblTotalOrder", "lblTotalDiff"}),
             QStringList({"8", "8", "0"}));
  }
};

CARTONPICK_WINDOW_TEST(ScanningUiTest);
#include "ScanningUi_test.moc"
