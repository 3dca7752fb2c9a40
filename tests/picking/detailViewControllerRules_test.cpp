#include "summary/deliveryDetailsViewController.h"
#include "summary/pickTableCell.h"
#include "support/RuleSets.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QTest>

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
};

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
};

CARTONPICK_TEST(detailViewControllerRulesTest);
#include "detailViewControllerRules_test.moc"
