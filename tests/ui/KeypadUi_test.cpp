#include "store/ManagedObjectContext.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

namespace {

/// Opens the keypad on a line of which `picked` are picked already.
void openKeypad(TestWindow &ui, const QString &picked = {}) {
  ui.openBox({{"C1", "A", 5}, {"C1", "B", 2}});
  if (!picked.isEmpty()) {
    ui.openKeypad();
    ui.confirm(picked);
  }
  ui.openKeypad();
}

std::size_t storedLines(const TestWindow &ui) {
  return ui.store().pickings("4711")->size();
}

}  // namespace

/// The keypad in the hands of a user, of a scanner and of an on-screen keyboard.
class KeypadUiTest : public QObject {
  Q_OBJECT

 private slots:
  void itShowsTheLine() {
    TestWindow ui;
    openKeypad(ui, "3");
    QCOMPARE(ui.texts({"lblItemCode", "lblItemBarcode", "lblItemDescription", "lblCurrentQty",
                       "lblOrderQty", "lblTotalQty", "txtNewQty"}),
             QStringList({"A", "bA", "Description of A", "3", "5", "3", ""}));
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
  }

  void itTakesTheQuantityByKeyboard() {
    TestWindow ui;
    openKeypad(ui, "3");
    ui.type("12");
    QCOMPARE(ui.text("txtNewQty"), "12");
    QCOMPARE(ui.text("lblTotalQty"), "15");
  }

  void itTakesTheQuantityByTouch() {
    TestWindow ui;
    openKeypad(ui);
    for (const QChar digit : QStringLiteral("1234567890")) {
      ui.touch(QStringLiteral("btn") + digit);
    }
    QCOMPARE(ui.text("txtNewQty"), "1234567890");
    QCOMPARE(ui.text("lblTotalQty"), "1234567890");
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
  }

  void itTakesTheQuantityByMouse() {
    TestWindow ui;
    openKeypad(ui);
    ui.click("btn4");
    ui.click("btn2");
    QCOMPARE(ui.text("txtNewQty"), "42");
    QCOMPARE(ui.text("lblTotalQty"), "42");
    ui.type("1");
    QCOMPARE(ui.text("txtNewQty"), "421");
  }

  void minusGoesInFrontOnce() {
    TestWindow ui;
    openKeypad(ui, "9");
    ui.touch("btn1");
    ui.touch("btnNegative");
    QCOMPARE(ui.text("txtNewQty"), "-1");
    QCOMPARE(ui.text("lblTotalQty"), "8");
    ui.touch("btnNegative");
    QCOMPARE(ui.text("txtNewQty"), "-1");
  }

  void digitsFollowAMinusThatCameFirst() {
    TestWindow ui;
    openKeypad(ui, "9");
    ui.touch("btnNegative");
    QCOMPARE(ui.text("txtNewQty"), "-");
    ui.type("2");
    QCOMPARE(ui.text("txtNewQty"), "-2");
    QCOMPARE(ui.text("lblTotalQty"), "7");
  }

  void theFifthTypedCharacterIsRefused() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("12345");
    QCOMPARE(ui.text("txtNewQty"), "1234");
    ui.touch("btn5");
    QCOMPARE(ui.text("txtNewQty"), "12345");
    ui.type("6");
    QCOMPARE(ui.text("txtNewQty"), "12345");
  }

  void nothingCanBeDeleted() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("12");
    ui.press(Qt::Key_Backspace);
    QCOMPARE(ui.text("txtNewQty"), "12");
    ui.press(Qt::Key_Home);
    ui.press(Qt::Key_Delete);
    QCOMPARE(ui.text("txtNewQty"), "12");
    ui.press(Qt::Key_A, Qt::ControlModifier);
    ui.press(Qt::Key_Delete);
    QCOMPARE(ui.text("txtNewQty"), "12");
    ui.press(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(ui.text("txtNewQty"), "12");
    QCOMPARE(ui.text("lblTotalQty"), "12");
  }

  void whatHasNoDigitCannotBeTyped() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("-a .");
    QCOMPARE(ui.text("txtNewQty"), "");
    QCOMPARE(ui.text("lblTotalQty"), "0");
  }

  void aPasteWithADigitIsTakenAsAWhole() {
    TestWindow ui;
    openKeypad(ui);
    QGuiApplication::clipboard()->setText("7a");
    ui.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(ui.text("txtNewQty"), "7a");
    QCOMPARE(ui.text("lblTotalQty"), "7");
  }

  void aPasteWithoutADigitOrTooLongIsRefused() {
    TestWindow ui;
    openKeypad(ui);
    QGuiApplication::clipboard()->setText("ab");
    ui.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(ui.text("txtNewQty"), "");
    QGuiApplication::clipboard()->setText("12345");
    ui.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(ui.text("txtNewQty"), "");
  }

  void aSelectionCanBeTypedOver() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("12");
    ui.press(Qt::Key_A, Qt::ControlModifier);
    ui.type("1");
    QCOMPARE(ui.text("txtNewQty"), "1");
    QCOMPARE(ui.text("lblTotalQty"), "1");
    ui.press(Qt::Key_Left, Qt::ShiftModifier);
    ui.type("8");
    QCOMPARE(ui.text("txtNewQty"), "8");
  }

  void anInputMethodCanCommitDigits() {
    TestWindow ui;
    openKeypad(ui);
    ui.commitByInputMethod("12");
    QCOMPARE(ui.text("txtNewQty"), "12");
    QCOMPARE(ui.text("lblTotalQty"), "12");
    ui.commitByInputMethod("345");
    QCOMPARE(ui.text("txtNewQty"), "12");
    ui.commitByInputMethod("x");
    QCOMPARE(ui.text("txtNewQty"), "12");
  }

  void returnPressesNothing() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("3");
    ui.press(Qt::Key_Return);
    ui.press(Qt::Key_Enter);
    QCOMPARE(ui.text("txtNewQty"), "3");
    QCOMPARE(storedLines(ui), 0U);
  }

  void aScanDoesNotConfirm() {
    TestWindow ui;
    openKeypad(ui);
    ui.scan("5012345678900");
    QVERIFY(ui.shows("txtNewQty"));
    QCOMPARE(storedLines(ui), 0U);
  }

  void escapeIsCancel() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("3");
    ui.press(Qt::Key_Escape);
    QTRY_VERIFY(!ui.shows("txtNewQty"));
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    QCOMPARE(ui.text("tblItemsRow0/pickqty"), "0");
    QCOMPARE(storedLines(ui), 0U);
  }

  void cancelChangesNothing() {
    TestWindow ui;
    openKeypad(ui, "3");
    ui.type("4");
    ui.touch("btnCancel");
    QTRY_VERIFY(!ui.shows("txtNewQty"));
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    QCOMPARE(ui.text("tblItemsRow0/pickqty"), "3");
    QCOMPARE(ui.store().pickings("4711")->front().pickqty, 3);
  }

  void okStoresTheQuantityAndSaysSo() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("6");
    ui.touch("btnOK");
    QTRY_VERIFY(!ui.shows("txtNewQty"));
    QCOMPARE(ui.text("lblSaved"), "Saved 6 × A in box C1, 10:12:05");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    QCOMPARE(ui.store().pickings("4711")->front().pickqty, 6);
    QCOMPARE(ui.texts({"tblItemsRow0/pickqty", "tblItemsRow0/diffqty", "lblTotalPick",
                       "lblTotalDiff", "tblBoxesRow0/lblPickQty", "lblBoxesIncompleteValue"}),
             QStringList({"6", "1", "6", "-1", "6", "1"}));
  }

  void okCanBePressedWithoutTouchingTheScreen() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("6");
    for (int i = 0; i < 20 && ui.keyboard() != "btnOK"; ++i) {
      ui.press(Qt::Key_Tab);
    }
    QCOMPARE(ui.keyboard(), "btnOK");
    ui.press(Qt::Key_Space);
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    QCOMPARE(ui.store().pickings("4711")->front().pickqty, 6);
  }

  void aResultBelowOneIsDropped() {
    TestWindow ui;
    openKeypad(ui, "3");
    ui.confirm("-3");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    QCOMPARE(ui.text("tblItemsRow0/pickqty"), "3");
    QCOMPARE(ui.store().pickings("4711")->front().pickqty, 3);
  }

  void whileItIsOpenNothingElseCanBeTouched() {
    TestWindow ui;
    openKeypad(ui);
    ui.touchAt({30, 200});
    ui.touch("btnPicking");
    ui.touch("tblBoxesRow0");
    QCOMPARE(ui.text("btnPicking"), "Stop Picking");
    QVERIFY(ui.shows("txtNewQty"));
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
  }
};

CARTONPICK_WINDOW_TEST(KeypadUiTest);
#include "KeypadUi_test.moc"
