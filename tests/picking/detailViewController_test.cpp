#include "picking/actionPickerViewController.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QTest>

/// The pane after loading, and the scan state that it shows.
class detailViewControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void nothingCanBeScannedAtFirst() {
    TestProgram program;
    program.enterPicking();
    const detailViewController &detail = program.detail();
    QVERIFY(!detail.scanStarted());
    QVERIFY(!detail.txtBarcode->isEnabled());
    QVERIFY(!detail.txtQuantity->isEnabled());
    QVERIFY(!detail.btnOptions->isEnabled());
    QCOMPARE(detail.curBoxIndex(), -1);
  }

  void theSecondSegmentOfAskForQuantityIsSelectedAtFirst() {
    TestProgram program;
    program.enterPicking();
    QCOMPARE(program.detail().segmAskForQty->selectedSegmentIndex(), 1);
  }

  void theFilterShowsAllLinesAtFirst() {
    TestProgram program;
    program.enterPicking();
    QCOMPARE(program.detail().segmentedControl->selectedSegmentIndex(), 0);
    QCOMPARE(program.detail().segmentedControl->titles(),
             QStringList({"All", "Not picked", "Different", "Matching"}));
  }

  void thereIsAnActionListButNoSummaryAtFirst() {
    TestProgram program;
    program.enterPicking();
    QVERIFY(program.detail().actionPicker() != nullptr);
    QCOMPARE(program.detail().deliveryDetailsVC(), nullptr);
  }

  void withoutAnOpenBoxTheTotalsAreDashes() {
    TestProgram program;
    program.enterPicking();
    const detailViewController &detail = program.detail();
    QCOMPARE(textsOf({detail.lblTotalPick, detail.lblTotalOrder, detail.lblTotalDiff}),
             QStringList({"-", "-", "-"}));
  }

  void showsWhetherScansAreAccepted() {
    TestProgram program;
    program.enterPicking();
    const Label &state = *program.detail().lblScanState;
    QCOMPARE(state.text(), "Open a box first");
    QCOMPARE(state.textColor(), Colour::grey);
    program.startPicking({{"C1", "A", 5}});
    QCOMPARE(state.text(), "Open a box first");
    program.master().tblBoxes->touchRow(0);
    QCOMPARE(state.text(), "Ready to scan");
    QCOMPARE(state.textColor(), Colour::green);
    program.master().btnPickingTouched();
    QCOMPARE(state.text(), "Open a box first");
  }

  void unusedActionsHaveNoEffect() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.master().tblBoxes->touchRow(0);
    program.detail().stepperValueChanged();
    program.detail().commitEditingStyle(*program.detail().tblItems,
                                        TableViewDataSource::EditingStyle::Delete, 0);
    QCOMPARE(program.detail().tblItems->numberOfRows(), 1);
    QCOMPARE(program.keypad(), nullptr);
    QCOMPARE(program.detail().lblTotalPick->text(), "0");
  }
};

CARTONPICK_TEST(detailViewControllerTest);
#include "detailViewController_test.moc"
