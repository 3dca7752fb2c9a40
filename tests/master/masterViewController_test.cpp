#include "support/TestProgram.h"

#include <QTest>

class masterViewControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void aDeliveryIsFoundAndPicked() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C1", "B", 2}, {"C2", "A", 1}});
    program.master().tblBoxes->touchRow(0);
    QCOMPARE(program.detail().lblTotalOrder->text(), "7");
    program.enterQuantity(0, "3");
    QCOMPARE(program.detail().lblTotalPick->text(), "3");
    QCOMPARE(program.context().pickings("4711")->size(), 1U);
    QCOMPARE(program.master().lblBoxesIncompleteValue->text(), "1");
  }
};

QTEST_GUILESS_MAIN(masterViewControllerTest)
#include "masterViewController_test.moc"
