#include "summary/pickTableCell.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

namespace {

const QString kNoBoxFound = QStringLiteral("No Box Found||OK");

/// Returns the names of the enabled items on both panes.
QStringList enabledOf(const TestProgram &program) {
  const masterViewController &master = program.master();
  const detailViewController &detail = program.detail();
  QStringList names;
  for (const TableView *table : {master.tblBoxes, master.tblOrders, master.tblStores}) {
    names += table->isEnabled() ? QStringList(table->objectName()) : QStringList();
  }
  for (const TextField *field :
       {master.txtDeliveryNo, master.txtBox, detail.txtBarcode, detail.txtQuantity}) {
    names += field->isEnabled() ? QStringList(field->objectName()) : QStringList();
  }
  for (const Button *button :
       {master.btnSearch, master.btnPicking, master.btnClose, detail.btnOptions}) {
    names += button->isEnabled() ? QStringList(button->objectName()) : QStringList();
  }
  return names;
}

QStringList totalsOf(const TestProgram &program) {
  const detailViewController &detail = program.detail();
  return textsOf({detail.lblTotalPick, detail.lblTotalOrder, detail.lblTotalDiff});
}

QStringList countersOf(const TestProgram &program) {
  const masterViewController &master = program.master();
  return textsOf({master.lblBoxesTotalValue, master.lblBoxesUnopenedValue,
                  master.lblBoxesCompletedValue, master.lblBoxesIncompleteValue});
}

/// Returns the item codes in the pick table.
QStringList itemsOf(const TestProgram &program) {
  QStringList items;
  const TableView &table = *program.detail().tblItems;
  for (int row = 0; row < table.rowCount(); ++row) {
    items << cellAt<pickTableCell>(table, row).item.text;
  }
  return items;
}

LoosePick loosePick(const QString &barcode, const QString &box = QStringLiteral("1")) {
  return {.barcode = barcode, .box = box, .item = u'i' + barcode};
}

const LoosePick &loosePickAt(const TestProgram &program, std::size_t index) {
  return std::get<LoosePick>(program.detail().arrayPick()->at(index));
}

/// Types `box` into the box field and presses Return.
void enterBox(const TestProgram &program, const QString &box) {
  program.master().txtBox->edit(box);
  program.master().txtBox->pressReturn();
}

const QStringList kIdle{"tblOrders", "tblStores", "txtDeliveryNo", "btnSearch", "btnClose"};
const QStringList kReady{"tblOrders", "tblStores",  "txtDeliveryNo",
                         "btnSearch", "btnPicking", "btnClose"};
const QStringList kPicking{"tblBoxes",    "txtBox",     "txtBarcode",
                           "txtQuantity", "btnPicking", "btnOptions"};

}  // namespace

/// Starting and stopping a picking, and opening its boxes.
class masterViewControllerPickingTest : public QObject {
  Q_OBJECT

 private slots:
  void beforeAnImportThePaneIsIdle() {
    TestProgram program;
    program.enterPicking();
    QVERIFY(!program.master().scanStarted());
    QCOMPARE(enabledOf(program), kIdle);
    QCOMPARE(program.master().btnPicking->title(), "Start Picking");
    QCOMPARE(program.detail().btnOptions->titleColor(), Colour::grey);
  }

  void anImportEnablesTheStartButton() {
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.lookUp(QStringLiteral("4711"));
    QVERIFY(!program.master().scanStarted());
    QCOMPARE(enabledOf(program), kReady);
  }

  void startingDisablesTheSearchAndEnablesScanning() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    QVERIFY(program.master().scanStarted());
    QCOMPARE(enabledOf(program), kPicking);
    QCOMPARE(program.master().btnPicking->title(), "Stop Picking");
    QCOMPARE(program.master().btnPicking->titleColor(), Colour::red);
    QCOMPARE(program.detail().btnOptions->titleColor(), Colour::blue);
  }

  void stoppingDisablesScanningAndEnablesTheSearch() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.master().btnPickingTouched();
    QVERIFY(!program.master().scanStarted());
    QCOMPARE(enabledOf(program), kReady);
    QCOMPARE(program.master().btnPicking->title(), "Start Picking");
    QCOMPARE(program.master().btnPicking->titleColor(), Colour::blue);
    QCOMPARE(program.detail().btnOptions->titleColor(), Colour::grey);
  }

  void scanStartedChangesBeforeTheTables() {
    TestProgram program;
    program.enterPicking();
    masterViewController &master = program.master();
    QList<bool> flags;
    QObject::connect(master.tblBoxes, &TableView::changed, &master,
                     [&] { flags << master.scanStarted(); });
    program.startPicking({{"C1", "A", 5}});
    master.btnPickingTouched();
    QCOMPARE(flags, QList<bool>({true, false}));
  }

  void withTheFirstAskForQuantitySegmentTheQuantityFieldDoesNotChange() {
    TestProgram program;
    program.enterPicking();
    program.detail().segmAskForQty->setSelectedSegmentIndex(0);
    program.startPicking({{"C1", "A", 5}});
    QVERIFY(!program.detail().txtQuantity->isEnabled());
    program.detail().txtQuantity->setEnabled(true);
    program.master().btnPickingTouched();
    QVERIFY(program.detail().txtQuantity->isEnabled());
  }

  void startingShowsTheBoxesAndCounters() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}, {"C3", "C", 0}});
    QCOMPARE(program.master().tblBoxes->rowCount(), 3);
    QCOMPARE(countersOf(program), QStringList({"3", "2", "1", "0"}));
  }

  void startingSetsTheDeliveryNumberAndFocusesTheBoxField() {
    TestProgram program;
    program.enterPicking();
    program.session().openBox(7);
    program.startPicking({{"C1", "A", 5, {}, QStringLiteral("0815")}});
    QCOMPARE(program.detail().doc(), "0815");
    QCOMPARE(program.detail().curBoxIndex(), -1);
    QVERIFY(program.master().txtBox->isFirstResponder());
  }

  void startingMakesTheMasterPaneTheDelegate() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.master().tblBoxes->touchRow(0);
    program.enterQuantity(0, QStringLiteral("5"));
    QCOMPARE(countersOf(program), QStringList({"1", "0", "1", "0"}));
  }

  void withoutALookupAnswerThereIsNoDeliveryNumber() {
    TestProgram program;
    program.enterPicking();
    program.restartPickingAs(QStringLiteral("left over"));
    program.session().stop();
    program.session().setJsonResult(std::nullopt);
    program.master().btnPickingTouched();
    QVERIFY(program.detail().doc().isNull());
    QCOMPARE(program.master().tblBoxes->rowCount(), 0);
    QCOMPARE(countersOf(program), QStringList({"0", "0", "0", "0"}));
    QVERIFY(program.detail().txtBarcode->isEnabled());
    QVERIFY(program.master().txtBox->isFirstResponder());
  }

  void afterAnInvalidAnswerThePickingHasNoDeliveryNumber_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("unreadable") << QByteArray("<html>");
    QTest::newRow("empty") << QByteArray("[]");
  }
  void afterAnInvalidAnswerThePickingHasNoDeliveryNumber() {
    QFETCH(QByteArray, body);
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.lookUp(QStringLiteral("4711"));
    program.service.answerWith(body);
    program.lookUp(QStringLiteral("4712"));
    program.master().btnPickingTouched();
    QVERIFY(program.detail().doc().isNull());
    QCOMPARE(program.master().tblBoxes->rowCount(), 1);
  }

  void stoppingClosesTheBox() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.master().tblBoxes->touchRow(0);
    program.master().btnPickingTouched();
    QCOMPARE(totalsOf(program), QStringList({"-", "-", "-"}));
    QCOMPARE(program.detail().curBoxIndex(), -1);
    QCOMPARE(program.detail().tblItems->rowCount(), 0);
    QVERIFY(program.master().txtDeliveryNo->isFirstResponder());
  }

  void stoppingKeepsTheListsAndTheDeliveryNumber() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}});
    const auto boxes = program.detail().arrayPick();
    program.master().btnPickingTouched();
    QCOMPARE(program.detail().arrayPick(), boxes);
    QCOMPARE(program.detail().doc(), "4711");
    QCOMPARE(program.master().tblBoxes->rowCount(), 2);
  }

  void everyStartRecountsTheBoxes() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.master().btnPickingTouched();
    program.detail().arrayPick()->emplace_back(loosePick(QStringLiteral("29001")));
    program.master().btnPickingTouched();
    QCOMPARE(program.master().tblBoxes->rowCount(), 2);
    QCOMPARE(countersOf(program), QStringList({"2", "1", "1", "0"}));
    QCOMPARE(program.detail().curBoxIndex(), -1);
    QCOMPARE(totalsOf(program), QStringList({"-", "-", "-"}));
  }

  void touchingARowOpensItsBox() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}, {"C2", "C", 1}});
    program.master().tblBoxes->touchRow(1);
    QCOMPARE(program.detail().curBoxIndex(), 1);
    QCOMPARE(itemsOf(program), QStringList({"B", "C"}));
    QCOMPARE(totalsOf(program), QStringList({"0", "3", "-3"}));
    QVERIFY(program.detail().txtBarcode->isFirstResponder());
    QCOMPARE(program.master().tblBoxes->selectedRow(), 1);
  }

  void touchingAnotherRowReplacesTheOpenBox() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}});
    program.master().tblBoxes->touchRow(1);
    program.master().tblBoxes->touchRow(0);
    QCOMPARE(program.detail().curBoxIndex(), 0);
    QCOMPARE(itemsOf(program), QStringList("A"));
    QCOMPARE(totalsOf(program), QStringList({"0", "5", "-5"}));
  }

  void theDifferenceIsPositiveIfMoreIsPickedThanOrdered() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    std::get<BoxRecord>(program.detail().arrayPick()->at(0)).boxpickqty = 7;
    program.master().tblBoxes->touchRow(0);
    QCOMPARE(totalsOf(program), QStringList({"7", "5", "2"}));
  }

  void withoutARunningPickingTouchingARowOpensNoBox() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.master().btnPickingTouched();
    program.master().tblBoxes->touchRow(0);
    QCOMPARE(program.detail().curBoxIndex(), -1);
    QCOMPARE(totalsOf(program), QStringList({"-", "-", "-"}));
  }

  void touchingAnotherTableOpensNoBox() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}});
    program.master().tblBoxes->touchRow(1);
    for (const int tag : {0, 1, 3}) {
      program.master().tblOrders->setTag(tag);
      program.master().didSelectRowAtIndexPath(*program.master().tblOrders, 0);
    }
    QCOMPARE(program.detail().curBoxIndex(), 1);
    QCOMPARE(itemsOf(program), QStringList("B"));
  }

  void enteringABoxIdentifierOpensTheBox() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}, {"C3", "C", 1}});
    const TableView &boxes = *program.master().tblBoxes;
    QSignalSpy redrawn(&boxes, &TableView::dataChanged);
    QSignalSpy scrolled(&boxes, &TableView::scrolledToRow);
    enterBox(program, QStringLiteral("C2"));
    QCOMPARE(program.detail().curBoxIndex(), 1);
    QCOMPARE(itemsOf(program), QStringList("B"));
    QCOMPARE(totalsOf(program), QStringList({"0", "2", "-2"}));
    QVERIFY(program.detail().txtBarcode->isFirstResponder());
    QTRY_COMPARE(redrawn.count(), 1);
    QCOMPARE(scrolled, QList<QVariantList>({{1}}));
    QCOMPARE(boxes.selectedRow(), 1);
    QCOMPARE(boxes.paintedRow(), 1);
    QCOMPARE(program.master().txtBox->text(), "C2");
    QCOMPARE(program.environment.alerts.count(), 0);
  }

  void boxIdentifiersAreComparedExactly_data() {
    QTest::addColumn<QString>("identifier");
    QTest::newRow("unknown") << QStringLiteral("C9");
    QTest::newRow("other case") << QStringLiteral("c2");
    QTest::newRow("leading space") << QStringLiteral(" C2");
    QTest::newRow("trailing space") << QStringLiteral("C2 ");
    QTest::newRow("prefix") << QStringLiteral("C");
    QTest::newRow("empty") << QString();
  }
  void boxIdentifiersAreComparedExactly() {
    QFETCH(QString, identifier);
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}});
    program.master().tblBoxes->touchRow(0);
    enterBox(program, identifier);
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kNoBoxFound));
    QCOMPARE(program.detail().curBoxIndex(), 0);
    QCOMPARE(totalsOf(program), QStringList({"0", "5", "-5"}));
    QCOMPARE(program.master().txtBox->text(), identifier);
    QCOMPARE(program.master().tblBoxes->paintedRow(), -1);
    program.answerTopAlert(0);
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(program.detail().curBoxIndex(), 0);
  }

  void noBoxIsFoundInAnEmptyList() {
    TestProgram program;
    program.enterPicking();
    program.master().btnPickingTouched();
    enterBox(program, QStringLiteral("C1"));
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kNoBoxFound));
    QCOMPARE(program.detail().curBoxIndex(), -1);
  }

  void theFirstOfTwoEntriesWithTheSameIdentifierOpens() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C2", "B", 2}});
    program.detail().arrayPick()->emplace_back(
        BoxRecord{QStringLiteral("C2"), 9, 0, {BoxLine{.item = QStringLiteral("Z")}}});
    enterBox(program, QStringLiteral("C2"));
    QCOMPARE(program.detail().curBoxIndex(), 1);
    QCOMPARE(itemsOf(program), QStringList("B"));
  }

  void aBoxTakesPrecedenceOverALoosePickWithItsIdentifier() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"1", "A", 5}});
    program.detail().arrayPick()->emplace_back(loosePick(QStringLiteral("29001")));
    enterBox(program, QStringLiteral("1"));
    QCOMPARE(program.detail().curBoxIndex(), 0);
  }

  void aLoosePickOpensAsAnEmptyBox() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.detail().arrayPick()->emplace_back(loosePick(QStringLiteral("29001")));
    enterBox(program, QStringLiteral("1"));
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(program.detail().curBoxIndex(), 1);
    QCOMPARE(totalsOf(program), QStringList({"0", "0", "0"}));
    QCOMPARE(program.detail().tblItems->rowCount(), 0);
    QCOMPARE(program.master().tblBoxes->selectedRow(), 1);
  }

  void returnInTheDeliveryNumberFieldOpensNoBox() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.master().txtBox->edit(QStringLiteral("C1"));
    QVERIFY(program.master().textFieldShouldReturn(*program.master().txtDeliveryNo));
    QCOMPARE(program.detail().curBoxIndex(), -1);
    QCOMPARE(program.environment.alerts.count(), 0);
  }

  void returnInTheBoxFieldIsAlwaysAccepted() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    for (const char *identifier : {"C1", "unknown"}) {
      program.master().txtBox->edit(QLatin1String(identifier));
      QVERIFY(program.master().textFieldShouldReturn(*program.master().txtBox));
    }
  }

  void aQuantityIsBookedToTheFirstLoosePickWithTheBarcode() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C1", "B", 2}, {"C1", "C", 1}});
    program.master().tblBoxes->touchRow(0);
    const auto list = program.detail().arrayPick();
    list->emplace_back(loosePick(QStringLiteral("29001")));
    list->emplace_back(loosePick(QStringLiteral("29001")));
    program.master().QtyChangedForBarcode(QStringLiteral("29001"), QStringLiteral("any box"), 2, 3);
    QCOMPARE(loosePickAt(program, 1).qty, 5);
    QCOMPARE(loosePickAt(program, 2).qty, 0);
    QCOMPARE(program.detail().tblItems->selectedRow(), 1);
    QCOMPARE(program.detail().tblItems->paintedRow(), 1);
  }

  void aQuantityForAnUnknownBarcodeChangesNothing_data() {
    QTest::addColumn<QString>("code");
    QTest::newRow("unknown") << QStringLiteral("29009");
    QTest::newRow("the item code of a loose pick") << QStringLiteral("i29001");
    QTest::newRow("the barcode of a box line") << QStringLiteral("bA");
  }
  void aQuantityForAnUnknownBarcodeChangesNothing() {
    QFETCH(QString, code);
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.detail().arrayPick()->emplace_back(loosePick(QStringLiteral("29001")));
    program.master().tblBoxes->touchRow(0);
    program.detail().tblItems->selectRow(0);
    program.master().QtyChangedForBarcode(code, QStringLiteral("C1"), 2, 3);
    QCOMPARE(loosePickAt(program, 1).qty, 0);
    QCOMPARE(boxpickqtyOf(program.detail().arrayPick()->at(0)), 0);
    QCOMPARE(program.detail().tblItems->selectedRow(), -1);
    QCOMPARE(program.detail().tblItems->paintedRow(), -1);
  }

  void aBookedQuantityWrapsAround() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.detail().arrayPick()->emplace_back(loosePick(QStringLiteral("29001")));
    program.master().QtyChangedForBarcode(QStringLiteral("29001"), {},
                                          std::numeric_limits<std::int32_t>::max(), 1);
    QCOMPARE(loosePickAt(program, 1).qty, std::numeric_limits<std::int32_t>::min());
  }

  void withoutAListNoQuantityIsBooked() {
    TestProgram program;
    program.enterPicking();
    program.master().QtyChangedForBarcode(QStringLiteral("29001"), {}, 1, 1);
    QVERIFY(!program.detail().arrayPick());
  }

  void theWorkingListIsReplacedWithoutCopying() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    const auto list = std::make_shared<PickList>();
    list->emplace_back(BoxRecord{QStringLiteral("C8"), 1, 0, {}});
    list->emplace_back(BoxRecord{QStringLiteral("C9"), 1, 0, {}});
    program.master().QuantityChangedOnDetailViewDelegateForPick(list, QStringLiteral("any box"));
    QCOMPARE(program.detail().arrayPick(), list);
    QCOMPARE(program.master().tblBoxes->rowCount(), 1);
    QCOMPARE(countersOf(program), QStringList({"1", "1", "0", "0"}));
  }

  void unusedActionsHaveNoEffect() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.master().tblBoxes->touchRow(0);
    const auto list = program.detail().arrayPick();
    const QStringList before = totalsOf(program) + countersOf(program) + enabledOf(program);
    masterViewController &master = program.master();
    master.updateItems();
    master.updatePickingStatus();
    master.updateItemBoxComparison();
    master.onLongPress();
    master.btnAddBoxTouched();
    master.txtBoxTextChanged();
    master.btnSendDataTouched();
    master.btnTotalsTouched();
    QCOMPARE(totalsOf(program) + countersOf(program) + enabledOf(program), before);
    QCOMPARE(program.detail().arrayPick(), list);
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(!program.context().hasChanges());
    QCOMPARE(program.service.requests().size(), 1);
  }

  void orderExistsAlwaysReturnsTrue() {
    TestProgram program;
    program.enterPicking();
    QVERIFY(program.master().orderExists(QStringLiteral("4711")));
    QVERIFY(program.master().orderExists(QString()));
  }
};

CARTONPICK_TEST(masterViewControllerPickingTest);
#include "masterViewControllerPicking_test.moc"
