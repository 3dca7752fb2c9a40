#include "summary/deliveryDetailsViewController.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QTest>

class splitViewControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void theFirstChildIsANavigationContainerWithTheMasterPaneOnTop() {
    TestProgram program;
    program.enterPicking();
    const auto *navigation =
        qobject_cast<NavigationController *>(program.split().childViewControllers().at(0));
    QVERIFY(navigation != nullptr);
    QCOMPARE(navigation->topViewController()->identifier(), "masterViewController");
    QCOMPARE(program.split().master(), navigation->topViewController());
  }

  void theSecondChildIsTheDetailPane() {
    TestProgram program;
    program.enterPicking();
    QCOMPARE(program.split().childViewControllers().size(), 2);
    QCOMPARE(program.split().childViewControllers().at(1)->identifier(), "detailViewController");
    QCOMPARE(program.split().detail(), program.split().childViewControllers().at(1));
  }

  void aScanGoesToTheNextFieldToFill() {
    TestProgram program;
    QCOMPARE(program.delegate.window()->scanField(), nullptr);
    program.enterPicking();
    QCOMPARE(program.delegate.window()->scanField(), program.master().txtDeliveryNo);
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}});
    QCOMPARE(program.delegate.window()->scanField(), program.master().txtBox);
    program.master().tblBoxes->touchRow(0);
    QCOMPARE(program.delegate.window()->scanField(), program.detail().txtBarcode);
  }

  void noFieldTakesAScanWhileAPaneIsCovered() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.master().tblBoxes->touchRow(0);
    program.detail().tblItems->touchRow(0);
    QCOMPARE(program.delegate.window()->scanField(), nullptr);
    program.keypad()->btnCancelTouched();
    QCOMPARE(program.delegate.window()->scanField(), program.detail().txtBarcode);
    program.detail().showDeliveryDetailsViewController();
    QCOMPARE(program.delegate.window()->scanField(), nullptr);
    program.detail().deliveryDetailsVC()->btnCloseTouched();
    program.environment.alerts.show({.title = QStringLiteral("Saved")});
    QCOMPARE(program.delegate.window()->scanField(), nullptr);
    program.answerTopAlert(0);
    program.environment.busy.begin(QStringLiteral("Sending …"));
    QCOMPARE(program.delegate.window()->scanField(), nullptr);
  }

  void underTheSummaryOnlyTheOtherPanesFocusedFieldsTakeScans() {
    TestProgram program;
    const Window &window = *program.delegate.window();
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.master().tblBoxes->touchRow(0);
    program.detail().showDeliveryDetailsViewController();
    QCOMPARE(window.scanField(), nullptr);
    QVERIFY(window.takesScanIn(*program.master().txtBox));
    QVERIFY(window.takesScanIn(*program.master().txtDeliveryNo));
    QVERIFY(!window.takesScanIn(*program.detail().txtBarcode));
    program.environment.alerts.show({.title = QStringLiteral("Saved")});
    QVERIFY(!window.takesScanIn(*program.master().txtBox));
    program.answerTopAlert(0);
    program.detail().deliveryDetailsVC()->btnCloseTouched();
    QVERIFY(window.takesScanIn(*program.detail().txtBarcode));
    program.detail().tblItems->touchRow(0);
    QVERIFY(!window.takesScanIn(*program.master().txtBox));
    QVERIFY(!window.takesScanIn(*program.keypad()->txtNewQty));
  }

  void bothPanesAreEmptyWhenThePickingScreenIsReopened() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}});
    program.master().tblBoxes->touchRow(0);
    program.enterQuantity(0, QStringLiteral("3"));
    program.master().performSegueWithIdentifier(QStringLiteral("returnFromPickingToStart"));
    program.answerTopAlert(0);
    program.enterPicking();
    verifyMasterIsEmpty(program.master());
    verifyDetailIsEmpty(program.detail());
    QCOMPARE(program.context().pickings(QStringLiteral("4711"))->size(), 1U);
  }

 private:
  static void verifyMasterIsEmpty(const masterViewController &master) {
    QCOMPARE(master.txtDeliveryNo->text(), QString());
    QVERIFY(master.txtDeliveryNo->isFirstResponder());
    QVERIFY(master.connectionDict().isEmpty());
    QVERIFY(!master.jsonResult());
    QVERIFY(master.lblCustomerName->isHidden());
    QCOMPARE(master.tblBoxes->numberOfRows(), 0);
    QVERIFY(!master.scanStarted());
  }

  static void verifyDetailIsEmpty(const detailViewController &detail) {
    QVERIFY(!detail.arrayPick());
    QVERIFY(!detail.arrayItems());
    QVERIFY(detail.doc().isNull());
    QCOMPARE(detail.curBoxIndex(), -1);
    QCOMPARE(detail.tblItems->numberOfRows(), 0);
    QCOMPARE(textsOf({detail.lblTotalPick, detail.lblTotalOrder, detail.lblTotalDiff}),
             QStringList({"-", "-", "-"}));
  }
};

CARTONPICK_TEST(splitViewControllerTest);
#include "splitViewController_test.moc"
