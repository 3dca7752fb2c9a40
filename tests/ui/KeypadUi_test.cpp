#include "store/ManagedObjectContext.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QTest>

namespace {

/// Opens the keypad for a line of which `picked` pieces have been picked, or none if it is empty.
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

/// Checks that the keypad closes, the scan field has the focus again, and nothing is stored.
void wasCancelled(TestWindow &ui) {
  QTRY_VERIFY(!ui.shows("txtNewQty"));
  QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
  QCOMPARE(storedLines(ui), 0U);
}

}  // namespace

/// The keypad's screen. changeQuantityViewController_test covers the rules for entering a quantity.
class KeypadUiTest : public QObject {
  Q_OBJECT

 private slots:
  void theLineIsShown() {
    TestWindow ui;
    openKeypad(ui, "3");
    QCOMPARE(ui.texts({"lblItemCode", "lblItemBarcode", "lblItemDescription", "lblCurrentQty",
                       "lblOrderQty", "lblTotalQty", "txtNewQty"}),
             QStringList({"A", "bA", "Description of A", "3", "5", "3", ""}));
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
  }

  void touchedClickedAndTypedKeysEnterTheQuantity() {
    TestWindow ui;
    openKeypad(ui, "3");
    ui.touch("btnNegative");
    ui.touch("btn4");
    ui.click("btn2");
    ui.type("1");
    ui.touch("btn5");
    QCOMPARE(ui.texts({"txtNewQty", "lblTotalQty"}), QStringList({"-4215", "-4212"}));
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
  }

  void anEditThatTheKeypadRefusesChangesNothing() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("1a");
    ui.press(Qt::Key_Backspace);
    QCOMPARE(ui.texts({"txtNewQty", "lblTotalQty"}), QStringList({"1", "1"}));
  }

  void aSelectionCanBeTypedOver() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("12");
    ui.press(Qt::Key_A, Qt::ControlModifier);
    ui.type("1");
    QCOMPARE(ui.texts({"txtNewQty", "lblTotalQty"}), QStringList({"1", "1"}));
  }

  void anInputMethodCommitsOnlyWhatTheKeypadAccepts() {
    TestWindow ui;
    openKeypad(ui);
    ui.commitByInputMethod("12");
    ui.commitByInputMethod("x");
    QCOMPARE(ui.texts({"txtNewQty", "lblTotalQty"}), QStringList({"12", "12"}));
  }

  void returnPressesNoKey() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("3");
    ui.press(Qt::Key_Return);
    ui.press(Qt::Key_Enter);
    QCOMPARE(ui.text("txtNewQty"), "3");
    QCOMPARE(storedLines(ui), 0U);
  }

  void escapeClosesTheKeypadWithoutStoring() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("3");
    ui.press(Qt::Key_Escape);
    wasCancelled(ui);
  }

  void cancelClosesTheKeypadWithoutStoring() {
    TestWindow ui;
    openKeypad(ui);
    ui.type("3");
    ui.touch("btnCancel");
    wasCancelled(ui);
  }

  void okStoresTheQuantityAndConfirmsIt() {
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

  void nothingElseCanBeTouchedWhileTheKeypadIsOpen() {
    TestWindow ui;
    openKeypad(ui);
    ui.touchAt({30, 200});
    ui.touch("btnPicking");
    ui.touch("tblBoxesRow0");
    QCOMPARE(ui.text("btnPicking"), "Stop Picking");
    QVERIFY(ui.shows("txtNewQty"));
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
  }

  void onlyTheCarefulKeypadHasADeleteKey() {
    {
      TestWindow ui;
      openKeypad(ui);
      QVERIFY(!ui.shows("btnDelete"));
    }
    TestWindow ui({1280, 800}, false, PickingRules::careful());
    openKeypad(ui);
    ui.touch("btn4");
    ui.type("25");
    ui.touch("btnDelete");
    ui.press(Qt::Key_Backspace);
    QCOMPARE(ui.texts({"txtNewQty", "lblTotalQty"}), QStringList({"4", "4"}));
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
  }
};

CARTONPICK_WINDOW_TEST(KeypadUiTest);
#include "KeypadUi_test.moc"
