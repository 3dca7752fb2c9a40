#include "picking/boxTableViewCell.h"
#include "summary/deliveryDetailsViewController.h"
#include "summary/pickTableCell.h"
#include "support/FullDisk.h"
#include "support/RuleSets.h"
#include "support/StoredArticles.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QRegularExpression>
#include <QTest>

#include <SQLiteCpp/Database.h>

namespace {

const QList<TestLine> kDelivery{{"C1", "A", 5}, {"C1", "B", 2}, {"C2", "A", 4}, {"C3", "C", 1}};

/// A program that picks the delivery, with its first box open.
class OpenBox : public TestProgram {
 public:
  explicit OpenBox(const PickingRules &rules, const QList<TestLine> &lines = kDelivery)
      : TestProgram(rules) {
    enterPicking();
    startPicking(lines);
    master().tblBoxes->touchRow(0);
  }

  /// Leaves the picking, and picks the delivery `lines` again with its first box open.
  void restart(const QList<TestLine> &lines) {
    master().btnPickingTouched();
    master().performSegueWithIdentifier(QStringLiteral("returnFromPickingToStart"));
    answerTopAlert(0);
    enterPicking();
    startPicking(lines);
    master().tblBoxes->touchRow(0);
  }

  void changeStore(const char *statement) const {
    SQLite::Database(storePath().toStdString(), SQLite::OPEN_READWRITE).exec(statement);
  }
  /// Scans `code`, enters `quantity` and confirms it.
  void pick(const QString &code, const QString &quantity) {
    scan(code);
    keypad()->txtNewQty->edit(quantity);
    keypad()->btnOKTouched();
    confirmIfAsked();
  }
  void pickFirstLine(const QString &quantity) { pick(QStringLiteral("A"), quantity); }
  /// Answers YES if the keypad asks whether more than ordered is meant.
  void confirmIfAsked() {
    if (topAlert().title.endsWith(QStringLiteral(" ordered?"))) {
      answerTopAlert(1);
    }
  }
  /// What the screen shows of the first line: its quantity, that of the box in both panes, that of
  /// the item, what was saved, and the outcome of the last scan.
  [[nodiscard]] QStringList shown() const {
    return {
        cellAt<pickTableCell>(*detail().tblItems, 0).pickqty.text,
        detail().lblTotalPick->text(),
        cellAt<boxTableViewCell>(*master().tblBoxes, 0).lblPickQty.text,
        detail().arrayItems()->front().pickqty.text(),
        detail().lblSaved->text(),
        detail().scanTrail().scans().front().outcome == ScanOutcome::Booked ? "booked" : "open"};
  }
  [[nodiscard]] QStringList stored() {
    QStringList rows;
    const auto picks = context().pickings(QStringLiteral("4711"));
    for (const Picking &pick : picks.value_or(std::vector<Picking>())) {
      rows << QStringLiteral("%1 %2 %3/%4")
                  .arg(pick.box, pick.item)
                  .arg(pick.pickqty)
                  .arg(pick.orderqty);
    }
    return rows;
  }
};

/// The picked quantities of the lines of the first box.
QList<int> picksOf(const TestProgram &program) {
  QList<int> picks;
  for (const BoxLine &line : boxitemsOf(program.detail().arrayPick()->front())) {
    picks << line.pickqty.value();
  }
  return picks;
}

/// "item pick/order" for each row of the summary of the picking.
QStringList summaryOf(const TestProgram &program) {
  program.detail().selectedAction(QStringLiteral("View Summary"));
  const TableView &table = *program.detail().deliveryDetailsVC()->tblPicking;
  QStringList rows;
  for (int row = 0; row < table.rowCount(); ++row) {
    const auto cell = cellAt<pickTableCell>(table, row);
    rows << QStringLiteral("%1 %2/%3").arg(cell.item.text, cell.pickqty.text, cell.orderqty.text);
  }
  return rows;
}

}  // namespace

/// The detail pane under both sets of rules.
class detailViewControllerRulesTest : public QObject {
  Q_OBJECT

 private slots:
  void onlyTheCarefulQuestionBeforeASendNamesTheDeliveryAndItsBoxes_data() { addRuleSets(); }
  void onlyTheCarefulQuestionBeforeASendNamesTheDeliveryAndItsBoxes() {
    QFETCH(bool, isCareful);
    OpenBox program(rulesOf(isCareful));
    program.enterQuantity(0, QStringLiteral("5"));
    program.detail().selectedAction(QStringLiteral("Complete and Send"));
    QCOMPARE(textsOf(program.environment.alerts),
             QStringList(
                 isCareful ? "Picking Completed?|Delivery 4711. Incomplete boxes: 1, unopened "
                             "boxes: 2. Are you sure that picking is completed?|NO|YES"
                           : "Picking Completed?|Are you sure that picking is completed?|NO|YES"));
  }

  void onlyTheCarefulRulesCloseTheSummaryWhenABoxOpens_data() { addRuleSets(); }
  void onlyTheCarefulRulesCloseTheSummaryWhenABoxOpens() {
    QFETCH(bool, isCareful);
    const OpenBox program(rulesOf(isCareful));
    program.detail().selectedAction(QStringLiteral("View Summary"));
    QVERIFY(program.detail().isCovered());
    program.master().tblBoxes->touchRow(1);
    QCOMPARE(program.detail().isCovered(), !isCareful);
    QCOMPARE(program.detail().lblOpenBox->text(), "C2");
    QCOMPARE(program.split().scanField() != nullptr, isCareful);
  }

  void onlyTheCarefulSummarySumsAnItemOverItsBoxes_data() { addRuleSets(); }
  void onlyTheCarefulSummarySumsAnItemOverItsBoxes() {
    QFETCH(bool, isCareful);
    OpenBox program(rulesOf(isCareful));
    program.enterQuantity(0, QStringLiteral("5"));
    program.enterQuantity(0, QStringLiteral("-1"));
    program.master().tblBoxes->touchRow(1);
    program.enterQuantity(0, QStringLiteral("2"));
    QCOMPARE(summaryOf(program), QStringList({isCareful ? "A 6/9" : "A 2/9", "B 0/2", "C 0/1"}));
  }

  void onlyTheCarefulSummarySumsRestoredPicksOfAnItem_data() { addRuleSets(); }
  void onlyTheCarefulSummarySumsRestoredPicksOfAnItem() {
    QFETCH(bool, isCareful);
    OpenBox program(rulesOf(isCareful));
    program.enterQuantity(0, QStringLiteral("5"));
    program.master().tblBoxes->touchRow(1);
    program.enterQuantity(0, QStringLiteral("3"));
    program.master().btnPickingTouched();
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(summaryOf(program), QStringList({isCareful ? "A 8/9" : "A 3/9", "B 0/2", "C 0/1"}));
  }

  void onlyTheStandardRulesShowAQuantityThatAnUnreadableStoreDoesNotTake_data() { addRuleSets(); }
  void onlyTheStandardRulesShowAQuantityThatAnUnreadableStoreDoesNotTake() {
    QFETCH(bool, isCareful);
    OpenBox program(rulesOf(isCareful));
    program.pickFirstLine(QStringLiteral("2"));
    program.changeStore("ALTER TABLE Picking RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    program.pickFirstLine(QStringLiteral("1"));
    QCOMPARE(program.shown().first(4),
             isCareful ? QStringList({"2", "2", "2", "2"}) : QStringList({"3", "3", "3", "3"}));
    QCOMPARE(textsOf(program.environment.alerts),
             isCareful ? QStringList("Quantity not saved|3 × A in box C1 is not saved: no such "
                                     "table: Picking. The line is as it was before. Enter the "
                                     "quantity again.|OK")
                       : QStringList());
    program.changeStore("ALTER TABLE Lost RENAME TO Picking");
    QCOMPARE(program.stored(), QStringList("C1 A 2/5"));
  }

  void onAFullDiskTheCarefulRulesTakeAQuantityBackAndTheNextOkSavesIt() {
    OpenBox program(PickingRules::careful());
    program.pickFirstLine(QStringLiteral("2"));
    {
      const FullDisk disk;
      QTest::ignoreMessage(QtWarningMsg,
                           "Not saved: disk I/O error, {code = 10; extended code = 778}");
      program.pickFirstLine(QStringLiteral("1"));
    }
    QCOMPARE(program.shown(), QStringList({"2", "2", "2", "2", "", "open"}));
    QCOMPARE(
        textsOf(program.environment.alerts),
        QStringList("Quantity not saved|3 × A in box C1 is not saved: disk I/O error. The line "
                    "is as it was before. Enter the quantity again.|OK"));
    QCOMPARE(program.stored(), QStringList("C1 A 2/5"));
    program.answerTopAlert(0);
    program.pickFirstLine(QStringLiteral("1"));
    QCOMPARE(program.shown(),
             QStringList({"3", "3", "3", "3", "Saved 3 × A in box C1, 10:12:05", "booked"}));
    QCOMPARE(program.stored(), QStringList("C1 A 3/5"));
  }

  void onlyTheCarefulRulesStoreTheSumOfTwoLinesOfAnItem_data() { addRuleSets(); }
  void onlyTheCarefulRulesStoreTheSumOfTwoLinesOfAnItem() {
    QFETCH(bool, isCareful);
    OpenBox program(rulesOf(isCareful), {{"C1", "A", 6}, {"C1", "B", 1}, {"C1", "A", 4}});
    program.enterQuantity(0, QStringLiteral("6"));
    program.enterQuantity(2, QStringLiteral("4"));
    QCOMPARE(program.stored(), QStringList(isCareful ? "C1 A 10/10" : "C1 A 4/6"));
    QCOMPARE(picksOf(program), QList<int>({6, 0, 4}));
    QCOMPARE(program.detail().lblTotalPick->text(), "10");
  }

  void underAFilterTheCarefulRulesChangeOnlyTheShownLine_data() { addRuleSets(); }
  void underAFilterTheCarefulRulesChangeOnlyTheShownLine() {
    QFETCH(bool, isCareful);
    OpenBox program(rulesOf(isCareful), {{"C1", "A", 6}, {"C1", "A", 4}});
    program.enterQuantity(0, QStringLiteral("6"));
    program.detail().segmentedControl->touchSegment(1);
    program.enterQuantity(0, QStringLiteral("3"));
    QCOMPARE(picksOf(program), isCareful ? QList<int>({6, 3}) : QList<int>({3, 3}));
    QCOMPARE(program.stored(), QStringList(isCareful ? "C1 A 9/10" : "C1 A 3/6"));
  }

  void onlyACarefulScanGoesToTheFirstLineOfAnItemThatIsNotFull_data() { addRuleSets(); }
  void onlyACarefulScanGoesToTheFirstLineOfAnItemThatIsNotFull() {
    QFETCH(bool, isCareful);
    OpenBox program(rulesOf(isCareful), {{"C1", "A", 6}, {"C1", "B", 1}, {"C1", "A", 4}});
    QList<int> rows;
    for (const char *quantity : {"5", "1", "4", "1"}) {
      program.scan(QStringLiteral("bA"));
      rows << program.keypad()->row();
      program.keypad()->txtNewQty->edit(quantity);
      program.keypad()->btnOKTouched();
      program.confirmIfAsked();
    }
    QCOMPARE(rows, isCareful ? QList<int>({0, 0, 2, 2}) : QList<int>({0, 0, 0, 0}));
  }

  void onlyTheCarefulRulesBookAForeignArticleAsALineOfTheBox_data() { addRuleSets(); }
  void onlyTheCarefulRulesBookAForeignArticleAsALineOfTheBox() {
    QFETCH(bool, isCareful);
    OpenBox program(rulesOf(isCareful));
    addArticle(program.storePath(), {"29009", "X", "CREAM MUG"});
    program.scan(QStringLiteral("29009"));
    QCOMPARE(
        textsOf({program.keypad()->lblItemCode, program.keypad()->lblItemBarcode,
                 program.keypad()->lblCurrentQty, program.keypad()->lblOrderQty}),
        isCareful ? QStringList({"X", "29009", "0", "0"}) : QStringList({"B", "bB", "0", "2"}));
    program.keypad()->txtNewQty->edit(QStringLiteral("2"));
    program.keypad()->btnOKTouched();
    program.confirmIfAsked();
    QCOMPARE(program.stored(), QStringList(isCareful ? "C1 X 2/0" : "C1 B 2/2"));
    QCOMPARE(picksOf(program), isCareful ? QList<int>({0, 0, 2}) : QList<int>({0, 2}));
    QCOMPARE(program.detail().lblTotalPick->text(), "2");
    QCOMPARE(program.master().tblBoxes->rowCount(), isCareful ? 3 : 4);
    QCOMPARE(program.detail().tblItems->rowCount(), isCareful ? 3 : 2);
    QCOMPARE(summaryOf(program), isCareful ? QStringList({"A 0/9", "B 0/2", "C 0/1", "X 2/0"})
                                           : QStringList({"A 0/9", "B 2/2", "C 0/1"}));
  }

  void aForeignLineIsReportedWithTheDeliveryAndOrderOfItsBox() {
    OpenBox program(PickingRules::careful());
    addArticle(program.storePath(), {"29009", "X", "CREAM MUG"});
    // The catalogue was loaded after the lookup, which leaves the picking without a number.
    program.restartPickingAs(QString());
    program.pick(QStringLiteral("29009"), QStringLiteral("2"));
    const Picking row = program.context().pickings(QStringLiteral("4711"))->front();
    QCOMPARE(QStringList({row.barcode, row.descr, row.doc, row.ordernum}),
             QStringList({"29009", "CREAM MUG", "4711", "A1"}));
  }

  void aForeignLineIsScannedAndCorrectedLikeAnyOther() {
    OpenBox program(PickingRules::careful());
    addArticle(program.storePath(), {"29009", "X", "CREAM MUG"});
    program.pick(QStringLiteral("29009"), QStringLiteral("2"));
    program.pick(QStringLiteral("X"), QStringLiteral("3"));
    program.enterQuantity(2, QStringLiteral("-1"));
    QCOMPARE(program.stored(), QStringList("C1 X 4/0"));
    QCOMPARE(picksOf(program), QList<int>({0, 0, 4}));
  }

  void cancellingTheKeypadOfAForeignArticleAddsNothing() {
    OpenBox program(PickingRules::careful());
    addArticle(program.storePath(), {"29009", "X", "CREAM MUG"});
    program.scan(QStringLiteral("X"));
    program.keypad()->btnCancelTouched();
    QCOMPARE(program.detail().tblItems->rowCount(), 2);
    program.enterQuantity(1, QStringLiteral("1"));
    QCOMPARE(program.stored(), QStringList("C1 B 1/2"));
  }

  void aForeignLineThatCannotBeSavedIsNotAdded() {
    OpenBox program(PickingRules::careful());
    addArticle(program.storePath(), {"29009", "X", "CREAM MUG"});
    {
      const FullDisk disk;
      QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^Not saved: "));
      program.pick(QStringLiteral("X"), QStringLiteral("2"));
    }
    QCOMPARE(picksOf(program), QList<int>({0, 0}));
    QCOMPARE(program.detail().tblItems->rowCount(), 2);
    QCOMPARE(program.topAlert().title, "Quantity not saved");
    program.answerTopAlert(0);
    program.pick(QStringLiteral("X"), QStringLiteral("2"));
    QCOMPARE(program.stored(), QStringList("C1 X 2/0"));
  }

  void anotherBarcodeOfTheCatalogueFindsTheLineOfItsItem() {
    OpenBox program(PickingRules::careful());
    addArticle(program.storePath(), {"29009", "B", "SECOND BARCODE"});
    program.pick(QStringLiteral("29009"), QStringLiteral("2"));
    QCOMPARE(program.stored(), QStringList("C1 B 2/2"));
    QCOMPARE(picksOf(program), QList<int>({0, 2}));
  }

  void onlyTheCarefulRulesRestoreAllLinesOfABox_data() { addRuleSets(); }
  void onlyTheCarefulRulesRestoreAllLinesOfABox() {
    QFETCH(bool, isCareful);
    QList<TestLine> lines;
    for (const char *item : {"A", "B", "C", "D", "E", "F"}) {
      lines << TestLine{"C1", item, 5};
    }
    OpenBox program(rulesOf(isCareful), lines);
    for (int row = 0; row < 6; ++row) {
      program.enterQuantity(row, QStringLiteral("3"));
    }
    program.restart(lines);
    QCOMPARE(picksOf(program),
             isCareful ? QList<int>({3, 3, 3, 3, 3, 3}) : QList<int>({3, 3, 3, 3, 0, 0}));
    QCOMPARE(program.detail().lblTotalPick->text(), "18");
    program.enterQuantity(4, QStringLiteral("2"));
    QCOMPARE(program.stored().at(4), isCareful ? "C1 E 5/5" : "C1 E 2/5");
  }

  void onlyTheCarefulRulesRestoreThePicksOfAllOrders_data() { addRuleSets(); }
  void onlyTheCarefulRulesRestoreThePicksOfAllOrders() {
    QFETCH(bool, isCareful);
    const QList<TestLine> lines{{"C1", "A", 5}, {"C1", "B", 2, "bB", "4711", "A2"}};
    OpenBox program(rulesOf(isCareful), lines);
    program.enterQuantity(0, QStringLiteral("1"));
    program.enterQuantity(1, QStringLiteral("2"));
    program.restart(lines);
    QCOMPARE(picksOf(program), isCareful ? QList<int>({1, 2}) : QList<int>({1, 0}));
  }

  void aForeignLineIsThereAgainAfterARestart() {
    OpenBox program(PickingRules::careful());
    addArticle(program.storePath(), {"29009", "X", "CREAM MUG"});
    program.pick(QStringLiteral("X"), QStringLiteral("2"));
    program.restart(kDelivery);
    program.pick(QStringLiteral("29009"), QStringLiteral("1"));
    QCOMPARE(picksOf(program), QList<int>({0, 0, 3}));
    QCOMPARE(program.stored(), QStringList("C1 X 3/0"));
    QCOMPARE(summaryOf(program), QStringList({"A 0/9", "B 0/2", "C 0/1", "X 3/0"}));
  }
};

CARTONPICK_TEST(detailViewControllerRulesTest);
#include "detailViewControllerRules_test.moc"
