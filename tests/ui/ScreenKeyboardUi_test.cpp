#include "support/TestClass.h"
#include "ui/ScreenKeyboard.h"

#include <QTest>

using namespace std::chrono_literals;

namespace {

const QList<TestLine> kLines{{"C1", "A", 6}, {"C1", "B", 12}, {"C1", "C", 8}, {"C2", "D", 3}};

void openForItems(TestWindow &ui) {
  ui.openBox(kLines);
  ui.touch("txtBarcode");
  QTRY_VERIFY(isScreenKeyboardOpen(ui));
}

/// Returns the place of the whole `item`, clipped or not.
QRectF placeOf(const QQuickItem *item) {
  return item->mapRectToScene(QRectF(QPointF(), item->size()));
}

}  // namespace

/// The on-screen keyboard.
class ScreenKeyboardUiTest : public QObject {
  Q_OBJECT

 public:
  static void beforeApplication() { chooseScreenKeyboard(); }

 private slots:
  void theScreenKeyboardOpensOnlyWhenAFieldIsTouched() {
    TestWindow ui({1280, 800}, true);
    ui.enterPicking();
    QVERIFY(!isScreenKeyboardOpen(ui));
    ui.touch("txtDeliveryNo");
    QTRY_VERIFY(isScreenKeyboardOpen(ui));
  }

  void theScreenKeyboardClosesAfterALookup() {
    TestWindow ui({1280, 800}, true);
    ui.enterPicking();
    ui.service.answerWith(deliveryJson(kLines));
    ui.touch("txtDeliveryNo");
    QTRY_VERIFY(isScreenKeyboardOpen(ui));
    ui.type(kLines.front().doc);
    ui.touch("btnSearch");
    QTRY_VERIFY(ui.isEnabled("btnPicking"));
    QTRY_VERIFY(!isScreenKeyboardOpen(ui));
  }

  void theScreenKeyboardClosesWhenAnAlertOpens() {
    TestWindow ui({1280, 800}, true);
    ui.enterPicking();
    ui.touch("txtDeliveryNo");
    QTRY_VERIFY(isScreenKeyboardOpen(ui));
    ui.touch("btnSearch");
    QTRY_COMPARE(ui.text("alertTitle"), "Please fill in data first");
    QTRY_VERIFY(!isScreenKeyboardOpen(ui));
    ui.touch("alertButton0");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtDeliveryNo"));
    QVERIFY(!isScreenKeyboardOpen(ui));
  }

  void theScreenKeyboardDoesNotCoverItsField_data() {
    QTest::addColumn<QString>("field");
    for (const char *field : {"txtDeliveryNo", "txtBox", "txtBarcode"}) {
      QTest::newRow(field) << field;
    }
  }

  void theScreenKeyboardDoesNotCoverItsField() {
    QFETCH(const QString, field);
    TestWindow ui({1024, 768}, true);
    if (field == "txtDeliveryNo") {
      ui.enterPicking();
    } else {
      ui.startPicking(kLines);
    }
    ui.touch(field);
    QTRY_VERIFY(isScreenKeyboardOpen(ui));
    ui.settle();
    const QRectF keyboard = TestWindow::visiblePart(screenKeyboard(ui));
    const QRectF place = TestWindow::visiblePart(ui.item(field));
    QVERIFY(keyboard.height() > 100.0);
    QVERIFY(QRectF(0, 0, 1024, 768).contains(keyboard));
    QVERIFY(place.top() >= 0.0);
    QVERIFY(place.bottom() < keyboard.top());
  }

  void theScreenKeyboardDoesNotReopenAfterAQuantity() {
    TestWindow ui({1280, 800}, true);
    ui.openBox(kLines);
    ui.touch("txtBarcode");
    QTRY_VERIFY(isScreenKeyboardOpen(ui));
    ui.scan("A");
    QTRY_COMPARE(ui.keyboard(), "txtNewQty");
    QTRY_VERIFY(!isScreenKeyboardOpen(ui));
    ui.confirm("6");
    QCOMPARE(ui.text("tblItemsRow0/pickqty"), "6");
    ui.settle();
    QVERIFY(!isScreenKeyboardOpen(ui));
  }

  void theScreenKeyboardDoesNotOpenForTheQuantity() {
    TestWindow ui({1280, 800}, true);
    ui.openBox(kLines);
    ui.openKeypad();
    ui.touch("txtNewQty");
    ui.settle();
    QVERIFY(!isScreenKeyboardOpen(ui));
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
  }

  void theScreenKeyboardIsHiddenByItsOwnKey() {
    TestWindow ui({1280, 800}, true);
    openForItems(ui);
    ui.touch("btnHideKeyboard");
    QTRY_VERIFY(!isScreenKeyboardOpen(ui));
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    ui.touch("txtBarcode");
    QTRY_VERIFY(isScreenKeyboardOpen(ui));
  }

  void theScreenKeyboardIsHiddenByATouchBesideIt_data() {
    QTest::addColumn<QString>("place");
    for (const char *place : {"lblTotalPick", "segmentedControl1", "txtDeliveryNo"}) {
      QTest::newRow(place) << place;
    }
  }

  void theScreenKeyboardIsHiddenByATouchBesideIt() {
    QFETCH(const QString, place);
    TestWindow ui({1280, 800}, true);
    openForItems(ui);
    ui.touch(place);
    QTRY_VERIFY(!isScreenKeyboardOpen(ui));
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    QCOMPARE(ui.item("segmentedControl1")->property("isSelected").toBool(),
             place == "segmentedControl1");
  }

  void aTouchInTheFieldDoesNotHideTheScreenKeyboard() {
    TestWindow ui({1280, 800}, true);
    openForItems(ui);
    touchKey(ui, "1");
    ui.touch("txtBarcode");
    ui.settle();
    QVERIFY(isScreenKeyboardOpen(ui));
    QCOMPARE(ui.text("txtBarcode"), "1");
  }

  void theScreenKeyboardCoversNeitherTheFieldNorTheListBelowIt_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("row");
    for (const QSize size :
         {QSize(1280, 800), QSize(1024, 768), QSize(800, 600), QSize(800, 1280)}) {
      QTest::addRow("boxes %dx%d", size.width(), size.height()) << size << "txtBox"
                                                                << "tblBoxesRow0";
      QTest::addRow("lines %dx%d", size.width(), size.height()) << size << "txtBarcode"
                                                                << "tblItemsRow0";
    }
  }

  void theScreenKeyboardCoversNeitherTheFieldNorTheListBelowIt() {
    QFETCH(const QSize, size);
    QFETCH(const QString, field);
    QFETCH(const QString, row);
    TestWindow ui(size, true);
    ui.openBox(kLines);
    ui.touch(field);
    QTRY_VERIFY(isScreenKeyboardOpen(ui));
    ui.settle();
    const double top = placeOf(screenKeyboard(ui)).top();
    for (const QString &name : {field, row}) {
      const QRectF place = placeOf(ui.item(name));
      QVERIFY2(place.top() >= 0 && place.bottom() <= top, qPrintable(name));
    }
    QCOMPARE(TestWindow::visiblePart(ui.item(row)), placeOf(ui.item(row)));
    ui.touch("btnHideKeyboard");
    QTRY_VERIFY(!isScreenKeyboardOpen(ui));
    ui.settle();
    QCOMPARE(ui.item("splitViewController")->height(), size.height());
  }

  void returnOfTheScreenKeyboardTakesNoTouchJustAfterItOpened() {
    TestWindow ui({1280, 800}, true);
    openForItems(ui);
    const QPoint key = placeOfKey(ui, "key", Qt::Key_Return);
    ui.drawChanges();
    ui.clock->advance(300ms);
    ui.tapAt(key);
    ui.settle();
    QCOMPARE(ui.alerts(), QStringList());
    ui.touchAt(key);
    QTRY_COMPARE(ui.alerts(), QStringList("Unknown Item|Item  not found!|OK"));
  }

  void aSecondTapOnReturnOfTheScreenKeyboardDoesNothing_data() {
    QTest::addColumn<QString>("typed");
    QTest::newRow("empty field") << "";
    QTest::newRow("item") << "A";
  }

  void aSecondTapOnReturnOfTheScreenKeyboardDoesNothing() {
    QFETCH(const QString, typed);
    TestWindow ui({1280, 800}, true);
    openForItems(ui);
    ui.type(typed);
    const QPoint key = placeOfKey(ui, "key", Qt::Key_Return);
    ui.touchAt(key);
    QTRY_VERIFY(!isScreenKeyboardOpen(ui));
    const qsizetype alerts = ui.alerts().size();
    QCOMPARE(alerts, typed.isEmpty() ? 1 : 0);
    for (const auto gap : {60ms, 90ms, 150ms}) {
      ui.drawChanges();
      ui.clock->advance(gap);
      ui.tapAt(key);
      ui.settle();
      QCOMPARE(ui.alerts().size(), alerts);
      QVERIFY(ui.text("txtNewQty").isEmpty());
    }
  }
};

CARTONPICK_WINDOW_TEST(ScreenKeyboardUiTest);
#include "ScreenKeyboardUi_test.moc"
