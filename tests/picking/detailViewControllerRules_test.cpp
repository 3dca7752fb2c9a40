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
};

CARTONPICK_TEST(detailViewControllerRulesTest);
#include "detailViewControllerRules_test.moc"
