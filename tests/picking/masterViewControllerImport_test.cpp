#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QTest>

#include <SQLiteCpp/Database.h>

namespace {

void importLines(TestProgram &program, const QList<TestLine> &lines) {
  program.enterPicking();
  program.service.answerWith(deliveryJson(lines));
  program.lookUp(QStringLiteral("4711"));
}

/// Makes the picks that an import restores unreadable.
void makeUnreadable(const TestProgram &program) {
  SQLite::Database(program.storePath().toStdString(), SQLite::OPEN_READWRITE)
      .exec("ALTER TABLE Picking RENAME TO Lost");
  QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
}

}  // namespace

/// What the master pane does with a delivery. DeliveryImport_test covers how the lists are built.
class masterViewControllerImportTest : public QObject {
  Q_OBJECT

 private slots:
  void theHeaderShowsTheDelivery() {
    TestProgram program;
    importLines(program, {{"C1", "A", 5}});
    const masterViewController &master = program.master();
    QCOMPARE(textsOf({master.lblCustomerName, master.lblBrand, master.lblCreationDate,
                      master.lblShipmentDate}),
             QStringList({"Customer: Corner Shop", "Brand: Hearth", "Date Created: 25/03/2026",
                          "Date Shipped: 01/04/2026"}));
    for (const Label *label : {master.lblCustomerName, master.lblBrand, master.lblCreationDate,
                               master.lblShipmentDate}) {
      QVERIFY(!label->isHidden());
    }
  }

  void anImportMakesThePickingReadyToStart() {
    TestProgram program;
    program.enterPicking();
    program.master().btnPicking->setTitleColor(Colour::red);
    program.master().tblBoxes->setEnabled(true);
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.lookUp(QStringLiteral("4711"));
    QVERIFY(program.master().btnPicking->isEnabled());
    QCOMPARE(program.master().btnPicking->titleColor(), Colour::blue);
    QVERIFY(!program.master().tblBoxes->isEnabled());
    QVERIFY(!program.environment.busy.isActive());
    QCOMPARE(program.master().jsonResult()->doc, "4711");
  }

  void anImportReloadsNoTable() {
    TestProgram program;
    importLines(program, {{"C1", "A", 5}});
    QCOMPARE(program.master().tblBoxes->numberOfRows(), 1);
    QCOMPARE(program.master().tblBoxes->rowCount(), 0);
    QCOMPARE(program.master().lblBoxesTotalValue->text(), "0");
    QCOMPARE(program.detail().tblItems->rowCount(), 0);
  }

  void pickedQuantitiesAreRestoredOnTheNextVisit() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.master().tblBoxes->touchRow(0);
    program.enterQuantity(0, QStringLiteral("3"));
    program.master().btnPickingTouched();
    program.master().performSegueWithIdentifier(QStringLiteral("returnFromPickingToStart"));
    program.answerTopAlert(0);
    importLines(program, {{"C1", "A", 5}});
    QCOMPARE(boxpickqtyOf(program.detail().arrayPick()->at(0)), 3);
    QCOMPARE(program.detail().arrayItems()->at(0).pickqty.value(), 3);
  }

  void thePickingIsNotReadyIfTheStoreCannotBeRead() {
    TestProgram program;
    program.enterPicking();
    makeUnreadable(program);
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.master().txtDeliveryNo->edit(QStringLiteral("4711"));
    program.master().btnSearchOrderNoTouched();
    QTRY_VERIFY(program.detail().arrayPick() != nullptr);
    QVERIFY(!program.master().lblCustomerName->isHidden());
    QVERIFY(program.master().activityIndicator->isAnimating());
    QVERIFY(!program.master().btnPicking->isEnabled());
    QVERIFY(program.master().connectionDict().isEmpty());
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(!program.environment.busy.isActive());
  }

  void aReadyPickingIsNoLongerReadyIfTheStoreCannotBeRead() {
    TestProgram program;
    importLines(program, {{"C1", "A", 5}});
    QVERIFY(program.master().btnPicking->isEnabled());
    makeUnreadable(program);
    program.master().btnSearchOrderNoTouched();
    QTRY_VERIFY(!program.environment.busy.isActive());
    QVERIFY(!program.master().btnPicking->isEnabled());
  }
};

CARTONPICK_TEST(masterViewControllerImportTest);
#include "masterViewControllerImport_test.moc"
