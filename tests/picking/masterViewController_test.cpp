#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QPointer>
#include <QTest>

namespace {

const QString kReturn = QStringLiteral("returnFromPickingToStart");
const QString kQuestion =
    QStringLiteral("Close Picking|Are you sure you want to leave picking?|OK|Cancel");

}  // namespace

/// The pane after loading, and how it is left.
class masterViewControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void theDeliveryNumberFieldHasTheFocusAtFirst() {
    TestProgram program;
    program.enterPicking();
    QVERIFY(program.master().txtDeliveryNo->isFirstResponder());
    QCOMPARE(program.master().txtDeliveryNo->text(), QString());
  }

  void noRequestIsRegisteredAtFirst() {
    TestProgram program;
    program.enterPicking();
    QVERIFY(program.master().connectionDict().isEmpty());
    QVERIFY(!program.master().jsonResult());
    QVERIFY(!program.master().activityIndicator->isAnimating());
  }

  void noDeliveryIsShownAtFirst() {
    TestProgram program;
    program.enterPicking();
    const masterViewController &master = program.master();
    for (const Label *label : {master.lblCustomerName, master.lblBrand, master.lblCreationDate,
                               master.lblShipmentDate}) {
      QVERIFY(label->isHidden());
      QCOMPARE(label->text(), QString());
    }
    QCOMPARE(master.tblBoxes->numberOfRows(), 0);
  }

  void theCountersHaveCaptions() {
    TestProgram program;
    program.enterPicking();
    const masterViewController &master = program.master();
    QCOMPARE(textsOf({master.lblBoxesTotalLabel, master.lblBoxesUnopenedLabel,
                      master.lblBoxesCompletedLabel, master.lblBoxesIncompleteLabel}),
             QStringList({"Boxes", "Unopened", "Completed", "Incomplete"}));
    QCOMPARE(textsOf({master.lblBoxesTotalValue, master.lblBoxesUnopenedValue,
                      master.lblBoxesCompletedValue, master.lblBoxesIncompleteValue}),
             QStringList({"0", "0", "0", "0"}));
  }

  void dismissKeyboardTakesTheFocusFromTheDeliveryNumberField() {
    TestProgram program;
    program.enterPicking();
    program.master().dismissKeyboard();
    QVERIFY(!program.master().txtDeliveryNo->isFirstResponder());
  }

  void leavingAsksForConfirmation() {
    TestProgram program;
    program.enterPicking();
    const ViewController *split = &program.split();
    program.master().performSegueWithIdentifier(kReturn);
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kQuestion));
    QCOMPARE(program.topAlert().cancelButtonIndex, 1);
    QCOMPARE(program.start().presentedViewController(), split);
  }

  void okLeavesAndPassesTheContextBack() {
    TestProgram program;
    program.enterPicking();
    const QPointer<masterViewController> master = &program.master();
    program.start().setManagedObjectContext(nullptr);
    master->performSegueWithIdentifier(kReturn);
    program.answerTopAlert(0);
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(program.start().presentedViewController(), nullptr);
    QCOMPARE(program.start().managedObjectContext(), &program.context());
    QTRY_VERIFY(master.isNull());
  }

  void cancelChangesNothing() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}});
    program.master().tblBoxes->touchRow(1);
    const QStringList before = stateOf(program);
    program.master().performSegueWithIdentifier(kReturn);
    program.answerTopAlert(1);
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(program.start().presentedViewController() != nullptr);
    QCOMPARE(stateOf(program), before);
    QVERIFY(program.master().scanStarted());
  }

  void preparingAnotherSegueAsksButDoesNotLeave() {
    TestProgram program;
    program.enterPicking();
    program.start().setManagedObjectContext(nullptr);
    Segue segue{QStringLiteral("segueElsewhere"), &program.start()};
    program.master().prepareForSegue(segue);
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kQuestion));
    program.answerTopAlert(0);
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(program.start().presentedViewController() != nullptr);
    QCOMPARE(program.start().managedObjectContext(), nullptr);
  }

  void anUnknownSegueIsIgnored() {
    TestProgram program;
    program.enterPicking();
    program.master().performSegueWithIdentifier(QStringLiteral("segueElsewhere"));
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(program.start().presentedViewController() != nullptr);
  }

  void aLateAnswerToTheQuestionDoesNotCloseTheNextPicking() {
    TestProgram program;
    program.enterPicking();
    const QPointer<masterViewController> master = &program.master();
    master->performSegueWithIdentifier(kReturn);
    master->performSegueWithIdentifier(kReturn);
    program.answerTopAlert(0);
    QTRY_VERIFY(master.isNull());
    program.enterPicking();
    program.answerTopAlert(0);
    QVERIFY(program.start().presentedViewController() != nullptr);
  }

 private:
  /// Returns the state of the picking screen.
  static QStringList stateOf(const TestProgram &program) {
    const masterViewController &master = program.master();
    const detailViewController &detail = program.detail();
    QStringList all = textsOf({master.lblCustomerName, master.lblBrand, master.lblCreationDate,
                               master.lblBoxesTotalValue, master.lblBoxesUnopenedValue,
                               detail.lblTotalPick, detail.lblTotalOrder, detail.lblTotalDiff});
    all << master.txtDeliveryNo->text() << master.btnPicking->title() << detail.doc()
        << QString::number(detail.curBoxIndex()) << QString::number(detail.arrayPick()->size())
        << QString::number(detail.arrayItems()->size())
        << QString::number(detail.tblItems->rowCount())
        << QString::number(master.tblBoxes->rowCount());
    return all;
  }
};

CARTONPICK_TEST(masterViewControllerTest);
#include "masterViewController_test.moc"
