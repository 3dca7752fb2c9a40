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

/// Stores a pick of `pickqty` pieces of the item "A" for the delivery `doc`.
void storePick(TestProgram &program, const QString &doc, int pickqty) {
  program.context().insert({.box = QStringLiteral("C1"),
                            .doc = doc,
                            .item = QStringLiteral("A"),
                            .ordernum = QStringLiteral("A1"),
                            .pickqty = pickqty});
  QVERIFY(!program.context().save());
}

/// Everything of the detail pane but the two lists.
QStringList stateOf(const detailViewController &detail) {
  return textsOf({detail.lblOpenBox, detail.lblTotalPick, detail.lblTotalOrder, detail.lblTotalDiff,
                  detail.lblScanState, detail.lblSaved}) +
         QStringList{detail.doc(),
                     detail.txtBarcode->text(),
                     detail.txtBarcode->isEnabled() ? "scan" : "no scan",
                     detail.btnOptions->isEnabled() ? "options" : "no options",
                     QString::number(detail.curBoxIndex()),
                     QString::number(detail.segmentedControl->selectedSegmentIndex()),
                     QString::number(detail.tblItems->rowCount()),
                     QString::number(detail.tblItems->selectedRow())};
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

  void anImportSetsOnlyTheTwoListsOfTheDetailPane() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C1", "B", 2}});
    program.master().tblBoxes->touchRow(0);
    program.enterQuantity(0, QStringLiteral("3"));
    program.detail().segmentedControl->touchSegment(1);
    program.detail().tblItems->selectRow(0);
    program.detail().txtBarcode->edit(QStringLiteral("half a co"));
    const QStringList before = stateOf(program.detail());
    program.service.answerWith(deliveryJson({{"C9", "Z", 9, {}, "0815"}}));
    program.lookUp(QStringLiteral("0815"));
    QCOMPARE(boxOf(program.detail().arrayPick()->at(0)), "C9");
    QCOMPARE(program.detail().arrayItems()->at(0).item, "Z");
    QCOMPARE(stateOf(program.detail()), before);
  }

  void thePicksOfTheDeliveredNumberComeBackNotThoseOfTheTypedOne() {
    TestProgram program;
    storePick(program, QStringLiteral("4711"), 3);
    storePick(program, QStringLiteral("0815"), 4);
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5, {}, "4711"}}));
    program.lookUp(QStringLiteral("0815"));
    QCOMPARE(boxpickqtyOf(program.detail().arrayPick()->at(0)), 3);
    QCOMPARE(program.detail().arrayItems()->at(0).pickqty.value(), 3);
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
