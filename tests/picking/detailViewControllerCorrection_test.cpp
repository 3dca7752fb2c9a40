#include "summary/pickTableCell.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QSignalSpy>
#include <QTest>

#include <SQLiteCpp/Database.h>
#include <limits>
#include <memory>

namespace {

const QList<TestLine> kDelivery{{"C1", "A", 5}, {"C1", "B", 2}, {"C1", "C", 1}, {"C2", "A", 4}};

QStringList totalsOf(const TestProgram &program) {
  const detailViewController &detail = program.detail();
  return textsOf({detail.lblTotalPick, detail.lblTotalOrder, detail.lblTotalDiff});
}

/// Returns the picked quantities of the lines in box `box`.
QList<int> picksOf(const TestProgram &program, std::size_t box) {
  QList<int> picks;
  for (const BoxLine &line : boxitemsOf(program.detail().arrayPick()->at(box))) {
    picks << line.pickqty.value();
  }
  return picks;
}

/// Returns "item pick" for each item line.
QStringList itemLinesOf(const TestProgram &program) {
  QStringList items;
  for (const BoxLine &line : *program.detail().arrayItems()) {
    items << QStringLiteral("%1 %2").arg(line.item).arg(line.pickqty.value());
  }
  return items;
}

/// Returns "box item pick" for each stored pick of the delivery.
QStringList storedIn(TestProgram &program) {
  QStringList rows;
  const auto picks = program.context().pickings(QStringLiteral("4711"));
  for (const Picking &pick : picks.value_or(std::vector<Picking>())) {
    rows << QStringLiteral("%1 %2 %3").arg(pick.box, pick.item).arg(pick.pickqty);
  }
  return rows;
}

/// A program that is picking the delivery `lines`, with the first box open.
class OpenBox : public TestProgram {
 public:
  explicit OpenBox(const QList<TestLine> &lines = kDelivery) {
    enterPicking();
    startPicking(lines);
    master().tblBoxes->touchRow(0);
  }

  [[nodiscard]] BoxRecord &box(std::size_t index = 0) const {
    return std::get<BoxRecord>(detail().arrayPick()->at(index));
  }

  void changeStore(const char *statement) const {
    SQLite::Database(storePath().toStdString(), SQLite::OPEN_READWRITE).exec(statement);
  }
};

/// Replaces the master pane as the delegate, and records the state on every call.
class RecordingDelegate : public QObject, public QuantityChangedOnDetailViewDelegate {
 public:
  explicit RecordingDelegate(TestProgram &program) : m_program(program) {}

  void QuantityChangedOnDetailView() override {
    ++calls;
    stored = storedIn(m_program);
    isSaved = !m_program.context().hasChanges();
    totals = totalsOf(m_program);
    isScanFieldFocused = m_program.detail().txtBarcode->isFirstResponder();
  }
  void QuantityChangedOnDetailViewDelegateForPick(std::shared_ptr<PickList> /*list*/,
                                                  const QString & /*box*/) override {
    ++replacements;
  }

  int calls = 0;
  int replacements = 0;
  QStringList stored;
  bool isSaved = false;
  QStringList totals;
  bool isScanFieldFocused = false;

 private:
  TestProgram &m_program;
};

}  // namespace

/// The keypad that the pane opens, and what a confirmed quantity changes.
class detailViewControllerCorrectionTest : public QObject {
  Q_OBJECT

 private slots:
  void theKeypadOpensAsAFormSheetForTheLine() {
    OpenBox program;
    program.box().boxitems.at(1).pickqty = 1;
    program.detail().displayQuantityViewControllerForIndexPath(1);
    const changeQuantityViewController *keypad = program.keypad();
    QVERIFY(keypad != nullptr);
    QCOMPARE(program.detail().presentationStyleName(), "formSheet");
    QCOMPARE(textsOf({keypad->lblItemCode, keypad->lblItemBarcode, keypad->lblItemDescription,
                      keypad->lblCurrentQty, keypad->lblTotalQty, keypad->lblOrderQty}),
             QStringList({"B", "bB", "Description of B", "1", "1", "2"}));
    QCOMPARE(keypad->txtNewQty->text(), QString());
    QCOMPARE(keypad->row(), 1);
  }

  void theKeypadShowsAQuantityAsDelivered() {
    OpenBox program;
    program.box().boxitems.at(0).orderqty = Quantity::delivered(QStringLiteral(" 7 pieces"));
    program.detail().tblItems->touchRow(0);
    QCOMPARE(program.keypad()->lblOrderQty->text(), " 7 pieces");
  }

  void theLineIsMarkedWhileTheKeypadIsOpen() {
    const OpenBox program;
    const TableView &table = *program.detail().tblItems;
    QSignalSpy redrawn(&table, &TableView::dataChanged);
    QSignalSpy scrolled(&table, &TableView::scrolledToRow);
    program.detail().tblItems->touchRow(2);
    QTRY_COMPARE(redrawn.count(), 1);
    QCOMPARE(scrolled, QList<QVariantList>({{2}}));
    QCOMPARE(table.selectedRow(), 2);
    QCOMPARE(table.paintedRow(), 2);
  }

  void aMissingRowOpensNothingAndPlaysTheErrorTone_data() {
    QTest::addColumn<int>("row");
    QTest::newRow("before the first") << -1;
    QTest::newRow("after the last") << 3;
  }
  void aMissingRowOpensNothingAndPlaysTheErrorTone() {
    QFETCH(int, row);
    const OpenBox program;
    program.detail().displayQuantityViewControllerForIndexPath(row);
    QCOMPARE(program.keypad(), nullptr);
    QCOMPARE(program.sounds->played(), std::vector<int>{1005});
    QCOMPARE(program.detail().tblItems->paintedRow(), -1);
  }

  void aConfirmedQuantityIsAddedToTheLine() {
    OpenBox program;
    program.enterQuantity(0, QStringLiteral("2"));
    program.enterQuantity(0, QStringLiteral("3"));
    QCOMPARE(picksOf(program, 0), QList<int>({5, 0, 0}));
    QCOMPARE(totalsOf(program), QStringList({"5", "8", "-3"}));
    QCOMPARE(storedIn(program), QStringList("C1 A 5"));
    QCOMPARE(cellAt<pickTableCell>(*program.detail().tblItems, 0).pickqty.text, "5");
    QCOMPARE(program.keypad(), nullptr);
  }

  void aNegativeQuantityIsSubtracted() {
    OpenBox program;
    program.enterQuantity(0, QStringLiteral("5"));
    program.enterQuantity(0, QStringLiteral("-2"));
    QCOMPARE(picksOf(program, 0), QList<int>({3, 0, 0}));
    QCOMPARE(totalsOf(program), QStringList({"3", "8", "-5"}));
    QCOMPARE(storedIn(program), QStringList("C1 A 3"));
  }

  void aLineCannotBeCorrectedBackToZero() {
    OpenBox program;
    program.enterQuantity(0, QStringLiteral("5"));
    const QString saved = program.detail().lblSaved->text();
    program.clock->set(program.clock->now().addSecs(60));
    program.enterQuantity(0, QStringLiteral("-5"));
    QCOMPARE(picksOf(program, 0), QList<int>({5, 0, 0}));
    QCOMPARE(totalsOf(program), QStringList({"5", "8", "-3"}));
    QCOMPARE(storedIn(program), QStringList("C1 A 5"));
    QCOMPARE(program.detail().lblSaved->text(), saved);
    QCOMPARE(program.keypad(), nullptr);
  }

  void cancelChangesNothingAndKeepsTheRowMarked() {
    OpenBox program;
    program.detail().tblItems->touchRow(1);
    program.keypad()->txtNewQty->edit(QStringLiteral("2"));
    program.keypad()->btnCancelTouched();
    QCOMPARE(picksOf(program, 0), QList<int>({0, 0, 0}));
    QCOMPARE(totalsOf(program), QStringList({"0", "8", "-8"}));
    QCOMPARE(storedIn(program), QStringList());
    QCOMPARE(program.detail().lblSaved->text(), QString());
    QCOMPARE(program.detail().tblItems->paintedRow(), 1);
    program.detail().tblItems->reloadData();
    QCOMPARE(program.detail().tblItems->paintedRow(), -1);
  }

  void theLineBecomesTheSumAndTheBoxGrowsByTheAddedQuantity() {
    OpenBox program;
    program.enterQuantity(0, QStringLiteral("2"));
    program.detail().CloseViewControllerWithGetQtyAtRow(0, 10, 1);
    QCOMPARE(picksOf(program, 0), QList<int>({11, 0, 0}));
    QCOMPARE(totalsOf(program), QStringList({"3", "8", "-5"}));
    QCOMPARE(storedIn(program), QStringList("C1 A 11"));
  }

  void theOrderedTotalIsNotUpdated() {
    OpenBox program;
    program.detail().lblTotalOrder->setText(QStringLiteral("unchanged"));
    program.enterQuantity(0, QStringLiteral("2"));
    QCOMPARE(totalsOf(program), QStringList({"2", "unchanged", "-6"}));
  }

  void sumsWrapAround() {
    OpenBox program;
    const std::int32_t maximum = std::numeric_limits<std::int32_t>::max();
    const std::int32_t minimum = std::numeric_limits<std::int32_t>::min();
    program.box().boxpickqty = maximum;
    program.detail().CloseViewControllerWithGetQtyAtRow(0, maximum, 1);
    QCOMPARE(picksOf(program, 0), QList<int>({minimum, 0, 0}));
    QCOMPARE(program.box().boxpickqty, minimum);
  }

  void withoutAFilterNoRowIsMarkedAfterACorrection() {
    OpenBox program;
    program.enterQuantity(0, QStringLiteral("2"));
    QCOMPARE(program.detail().tblItems->selectedRow(), -1);
    QCOMPARE(program.detail().tblItems->paintedRow(), -1);
  }

  void withAFilterTheRowStaysMarkedEvenIfItShowsAnotherLine() {
    OpenBox program;
    program.detail().segmentedControl->touchSegment(1);
    program.enterQuantity(0, QStringLiteral("2"));
    const TableView &table = *program.detail().tblItems;
    QCOMPARE(picksOf(program, 0), QList<int>({2, 0, 0}));
    QCOMPARE(table.rowCount(), 2);
    QCOMPARE(table.selectedRow(), 0);
    QCOMPARE(table.paintedRow(), 0);
    QCOMPARE(cellAt<pickTableCell>(table, 0).item.text, "B");
  }

  void withAFilterARowThatDisappearsIsNotMarked() {
    OpenBox program;
    program.detail().segmentedControl->touchSegment(1);
    program.enterQuantity(2, QStringLiteral("1"));
    QCOMPARE(picksOf(program, 0), QList<int>({0, 0, 1}));
    QCOMPARE(program.detail().tblItems->rowCount(), 2);
    QCOMPARE(program.detail().tblItems->paintedRow(), -1);
  }

  void withAFilterCorrectingTheLastLineEmptiesTheTable() {
    OpenBox program({{"C1", "A", 5}});
    program.detail().segmentedControl->touchSegment(1);
    program.enterQuantity(0, QStringLiteral("1"));
    QCOMPARE(program.detail().tblItems->rowCount(), 0);
    QCOMPARE(program.detail().tblItems->paintedRow(), -1);
    QCOMPARE(storedIn(program), QStringList("C1 A 1"));
  }

  void withEveryFilterTheShownLineIsCorrected_data() {
    QTest::addColumn<int>("segment");
    QTest::addColumn<int>("row");
    QTest::addColumn<QList<int>>("picks");
    QTest::newRow("all") << 0 << 1 << QList<int>{0, 4, 1};
    QTest::newRow("not picked") << 1 << 0 << QList<int>{2, 2, 1};
    QTest::newRow("different") << 2 << 0 << QList<int>{2, 2, 1};
    QTest::newRow("matching") << 3 << 1 << QList<int>{0, 2, 3};
  }
  void withEveryFilterTheShownLineIsCorrected() {
    QFETCH(int, segment);
    QFETCH(int, row);
    const OpenBox program;
    program.box().boxitems.at(1).pickqty = 2;
    program.box().boxitems.at(2).pickqty = 1;
    program.detail().segmentedControl->touchSegment(segment);
    program.detail().tblItems->touchRow(row);
    program.keypad()->txtNewQty->edit(QStringLiteral("2"));
    program.keypad()->btnOKTouched();
    QTEST(picksOf(program, 0), "picks");
  }

  void withoutAFilterOnlyTheTouchedLineOfAnItemChanges() {
    OpenBox program({{"C1", "A", 5, "first"}, {"C1", "A", 3, "second"}});
    program.enterQuantity(1, QStringLiteral("2"));
    QCOMPARE(picksOf(program, 0), QList<int>({0, 2}));
    QCOMPARE(program.context().pickings(QStringLiteral("4711"))->front().barcode, "second");
    QCOMPARE(program.context().pickings(QStringLiteral("4711"))->front().orderqty, 3);
  }

  void withAFilterTheFirstLineOfTheItemChangesTooAndIsStored() {
    OpenBox program({{"C1", "A", 5, "first"}, {"C1", "A", 3, "second"}});
    program.detail().segmentedControl->touchSegment(1);
    program.enterQuantity(1, QStringLiteral("2"));
    QCOMPARE(picksOf(program, 0), QList<int>({2, 2}));
    QCOMPARE(totalsOf(program), QStringList({"2", "8", "-6"}));
    QCOMPARE(storedIn(program), QStringList("C1 A 2"));
    QCOMPARE(program.context().pickings(QStringLiteral("4711"))->front().barcode, "first");
    QCOMPARE(program.context().pickings(QStringLiteral("4711"))->front().orderqty, 5);
  }

  void theItemLineGetsOnlyTheQuantityOfTheCorrectedLine() {
    OpenBox program;
    program.enterQuantity(0, QStringLiteral("5"));
    QCOMPARE(itemLinesOf(program), QStringList({"A 5", "B 0", "C 0"}));
    program.master().tblBoxes->touchRow(1);
    program.enterQuantity(0, QStringLiteral("1"));
    QCOMPARE(itemLinesOf(program), QStringList({"A 1", "B 0", "C 0"}));
    QCOMPARE(picksOf(program, 0), QList<int>({5, 0, 0}));
    QCOMPARE(picksOf(program, 1), QList<int>({1}));
    QCOMPARE(storedIn(program), QStringList({"C1 A 5", "C2 A 1"}));
  }

  void everyItemLineOfTheItemIsUpdated() {
    OpenBox program;
    auto lines = std::make_shared<ItemLines>(*program.detail().arrayItems());
    lines->push_back({.item = QStringLiteral("A")});
    lines->push_back({.item = QStringLiteral("a")});
    program.session().setArrayItems(lines);
    program.enterQuantity(0, QStringLiteral("5"));
    QCOMPARE(itemLinesOf(program), QStringList({"A 5", "B 0", "C 0", "A 5", "a 0"}));
  }

  void withoutItemLinesTheBoxIsStillCorrected() {
    OpenBox program;
    program.session().setArrayItems(nullptr);
    program.enterQuantity(0, QStringLiteral("5"));
    QCOMPARE(picksOf(program, 0), QList<int>({5, 0, 0}));
  }

  void theMasterPaneIsNotifiedAfterTheQuantityIsOnDisk() {
    OpenBox program;
    RecordingDelegate delegate(program);
    program.detail().setDelegate(&delegate);
    program.detail().txtBarcode->resignFirstResponder();
    program.enterQuantity(0, QStringLiteral("5"));
    QCOMPARE(delegate.calls, 1);
    QCOMPARE(delegate.replacements, 0);
    QCOMPARE(delegate.stored, QStringList("C1 A 5"));
    QVERIFY(delegate.isSaved);
    QCOMPARE(delegate.totals, QStringList({"5", "8", "-3"}));
    QVERIFY(!delegate.isScanFieldFocused);
    QVERIFY(program.detail().txtBarcode->isFirstResponder());
  }

  void withoutAMasterPaneTheQuantityIsStillStored() {
    OpenBox program;
    auto delegate = std::make_unique<RecordingDelegate>(program);
    program.detail().setDelegate(delegate.get());
    delegate.reset();
    program.enterQuantity(0, QStringLiteral("5"));
    QCOMPARE(storedIn(program), QStringList("C1 A 5"));
    QVERIFY(program.detail().txtBarcode->isFirstResponder());
  }

  void theNextScanCanFollowImmediately() {
    OpenBox program;
    program.scan(QStringLiteral("bA"));
    program.keypad()->txtNewQty->edit(QStringLiteral("5"));
    QSignalSpy requests(program.detail().txtBarcode, &TextField::keyboardRequested);
    program.keypad()->btnOKTouched();
    QCOMPARE(requests.count(), 1);
    program.scan(QStringLiteral("bB"));
    QCOMPARE(program.keypad()->lblItemCode->text(), "B");
  }

  void theStoredDeliveryNumberComesFromTheLine() {
    OpenBox program;
    program.restartPickingAs(QStringLiteral("the pane's"));
    program.enterQuantity(0, QStringLiteral("5"));
    QCOMPARE(storedIn(program), QStringList("C1 A 5"));
  }

  void aQuantityThatCannotBeStoredStaysInMemory() {
    OpenBox program;
    program.changeStore("ALTER TABLE Picking RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    program.enterQuantity(0, QStringLiteral("5"));
    QCOMPARE(picksOf(program, 0), QList<int>({5, 0, 0}));
    QCOMPARE(totalsOf(program), QStringList({"5", "8", "-3"}));
    QCOMPARE(program.master().lblBoxesIncompleteValue->text(), "1");
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(program.detail().lblSaved->text(), QString());
    QVERIFY(!program.context().hasChanges());
    program.changeStore("ALTER TABLE Lost RENAME TO Picking");
    QCOMPARE(storedIn(program), QStringList());
  }

  void showsWhatWasSavedWhereAndWhen() {
    OpenBox program;
    program.enterQuantity(1, QStringLiteral("6"));
    QCOMPARE(program.detail().lblSaved->text(), "Saved 6 × B in box C1, 10:12:05");
    program.clock->set(QDateTime(QDate(2026, 3, 29), QTime(1, 0), QTimeZone::utc()));
    program.enterQuantity(1, QStringLiteral("1"));
    QCOMPARE(program.detail().lblSaved->text(), "Saved 7 × B in box C1, 04:00:00");
  }

  void theSavedMessageShowsSpecialCharactersUnchanged() {
    OpenBox program({{"%2", "%1 <b>", 5}});
    program.enterQuantity(0, QStringLiteral("6"));
    QCOMPARE(program.detail().lblSaved->text(), "Saved 6 × %1 <b> in box %2, 10:12:05");
  }

  void theNextPickingClearsTheSavedMessage() {
    OpenBox program;
    program.enterQuantity(0, QStringLiteral("6"));
    program.master().btnPickingTouched();
    program.master().btnPickingTouched();
    QCOMPARE(program.detail().lblSaved->text(), QString());
  }

  void thePickListIsWrittenOnlyWithADeliveryNumber() {
    OpenBox program;
    program.restartPickingAs(QString());
    program.detail().ChangePickingRowInManagedContext();
    QVERIFY(program.context().deliveryPickTimes()->empty());
    program.restartPickingAs(QStringLiteral("4711"));
    program.detail().ChangePickingRowInManagedContext();
    QCOMPARE(program.context().deliveryPickTimes()->size(), 1U);
    QVERIFY(!program.context().hasChanges());
  }
};

CARTONPICK_TEST(detailViewControllerCorrectionTest);
#include "detailViewControllerCorrection_test.moc"
