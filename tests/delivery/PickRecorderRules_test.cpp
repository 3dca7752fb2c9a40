#include "delivery/PickRecorder.h"
#include "support/RuleSets.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QTest>

namespace {

const QString kDoc = QStringLiteral("4711");

BoxLine lineOf(int pickqty) {
  return {.doc = kDoc, .item = QStringLiteral("A"), .orderqty = 9, .pickqty = pickqty};
}

/// A program with one line of 6 pieces, which was sent.
class SentLine : public TestProgram {
 public:
  explicit SentLine(const PickingRules &rules) : TestProgram(rules) {
    record(6);
    context().setSent(row(), 1);
    QVERIFY(!context().save());
  }

  void record(int pickqty) {
    QVERIFY(
        recordPick(context(), *clock, QStringLiteral("C1"), lineOf(pickqty), environment.rules));
  }
  [[nodiscard]] Picking row() { return context().pickings(kDoc)->front(); }
};

}  // namespace

/// The recorder under both sets of rules.
class PickRecorderRulesTest : public QObject {
  Q_OBJECT

 private slots:
  void onlyUnderTheCarefulRulesIsACorrectedLineUnsentAgain_data() { addRuleSets(); }
  void onlyUnderTheCarefulRulesIsACorrectedLineUnsentAgain() {
    QFETCH(bool, isCareful);
    SentLine program(rulesOf(isCareful));
    program.record(5);
    QCOMPARE(program.row().pickqty, 5);
    QCOMPARE(program.row().sent, isCareful ? 0 : 1);
    QCOMPARE(program.context().unsentPickings(kDoc)->size(), isCareful ? 1U : 0U);
  }

  void anUnchangedLineStaysSent_data() { addRuleSets(); }
  void anUnchangedLineStaysSent() {
    QFETCH(bool, isCareful);
    SentLine program(rulesOf(isCareful));
    program.record(6);
    QCOMPARE(program.row().sent, 1);
  }
};

CARTONPICK_TEST(PickRecorderRulesTest);
#include "PickRecorderRules_test.moc"
