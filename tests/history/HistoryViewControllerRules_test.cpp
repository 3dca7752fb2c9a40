#include "history/HistoryViewController.h"
#include "summary/deliveryDetailsViewController.h"
#include "summary/pickTableCell.h"
#include "support/RuleSets.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QTest>

/// The history under both sets of rules.
class HistoryViewControllerRulesTest : public QObject {
  Q_OBJECT

 private slots:
  void onlyTheCarefulSummarySumsAnItemOverItsBoxes_data() { addRuleSets(); }
  void onlyTheCarefulSummarySumsAnItemOverItsBoxes() {
    QFETCH(bool, isCareful);
    TestProgram program(rulesOf(isCareful));
    for (const auto &[box, pickqty, orderqty] : {std::tuple("C1", 5, 6), std::tuple("C2", 4, 4)}) {
      program.context().insert(Picking{.box = box,
                                       .datepicked = program.clock->now(),
                                       .doc = QStringLiteral("4711"),
                                       .item = QStringLiteral("A"),
                                       .orderqty = orderqty,
                                       .pickqty = pickqty});
    }
    QVERIFY(!program.context().save());
    program.start().performSegueWithIdentifier(QStringLiteral("segueHistory"));
    auto &history =
        *qobject_cast<HistoryViewController *>(program.start().presentedViewController());
    history.tblHistoryOverview->touchRow(0);
    const auto cell = cellAt<pickTableCell>(*history.deliveryDetailsVC()->tblPicking, 0);
    QCOMPARE(QStringList({cell.pickqty.text, cell.orderqty.text, cell.diffqty.text}),
             isCareful ? QStringList({"9", "10", "-1"}) : QStringList({"5", "10", "-5"}));
  }
};

CARTONPICK_TEST(HistoryViewControllerRulesTest);
#include "HistoryViewControllerRules_test.moc"
