#include "support/RuleSets.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QTest>

namespace {

/// A program that has found a delivery.
class FoundDelivery : public TestProgram {
 public:
  explicit FoundDelivery(const PickingRules &rules) : TestProgram(rules) {
    enterPicking();
    service.answerWith(deliveryJson({{"C1", "A", 5}}));
    lookUp(QStringLiteral("4711"));
  }

  [[nodiscard]] bool canStart() const { return master().btnPicking->isEnabled(); }
  /// Returns the number of labels of the header that are shown.
  [[nodiscard]] int shownHeader() const {
    int shown = 0;
    for (const Label *label : {master().lblCustomerName, master().lblBrand,
                               master().lblCreationDate, master().lblShipmentDate}) {
      shown += label->isHidden() ? 0 : 1;
    }
    return shown;
  }
};

}  // namespace

/// The delivery that can be started, under both sets of rules.
class masterViewControllerRulesTest : public QObject {
  Q_OBJECT

 private slots:
  void onlyTheStandardRulesKeepADeliveryUnderAnotherNumber_data() { addRuleSets(); }
  void onlyTheStandardRulesKeepADeliveryUnderAnotherNumber() {
    QFETCH(bool, isCareful);
    const FoundDelivery program(rulesOf(isCareful));
    QVERIFY(program.canStart());
    QCOMPARE(program.shownHeader(), 4);
    program.master().txtDeliveryNo->edit(QStringLiteral("4712"));
    QCOMPARE(program.canStart(), !isCareful);
    QCOMPARE(program.shownHeader(), isCareful ? 0 : 4);
  }

  void onlyTheStandardRulesKeepADeliveryAfterALookupThatFindsNothing_data() {
    QTest::addColumn<bool>("isCareful");
    QTest::addColumn<QByteArray>("body");
    for (const bool isCareful : {false, true}) {
      const QByteArray rules = isCareful ? "careful: " : "standard: ";
      QTest::newRow(rules + "an unknown number") << isCareful << QByteArray("[]");
      QTest::newRow(rules + "not JSON") << isCareful << QByteArray("<html>");
      QTest::newRow(rules + "already sent")
          << isCareful << QByteArray("\"This picking has already been sent to the server\"");
    }
  }
  void onlyTheStandardRulesKeepADeliveryAfterALookupThatFindsNothing() {
    QFETCH(bool, isCareful);
    QFETCH(QByteArray, body);
    FoundDelivery program(rulesOf(isCareful));
    program.service.answerWith(body);
    program.master().btnSearchOrderNoTouched();
    QTRY_COMPARE(program.environment.alerts.count(), 1);
    QCOMPARE(program.canStart(), !isCareful);
    QCOMPARE(program.shownHeader(), isCareful ? 0 : 4);
  }

  void onlyTheStandardRulesKeepADeliveryAfterAFailedLookup_data() { addRuleSets(); }
  void onlyTheStandardRulesKeepADeliveryAfterAFailedLookup() {
    QFETCH(bool, isCareful);
    FoundDelivery program(rulesOf(isCareful));
    program.environment.serviceHost = LoopbackService::unreachableHost();
    program.master().btnSearchOrderNoTouched();
    QTRY_COMPARE(program.environment.alerts.count(), 2);
    QCOMPARE(program.canStart(), !isCareful);
    QCOMPARE(program.shownHeader(), isCareful ? 0 : 4);
  }

  void theNextDeliveryFoundCanBeStarted_data() { addRuleSets(); }
  void theNextDeliveryFoundCanBeStarted() {
    QFETCH(bool, isCareful);
    FoundDelivery program(rulesOf(isCareful));
    program.service.answerWith(deliveryJson({{"C1", "B", 2, {}, QStringLiteral("4712")}}));
    program.lookUp(QStringLiteral("4712"));
    QVERIFY(program.canStart());
    QCOMPARE(program.shownHeader(), 4);
    program.master().btnPickingTouched();
    QCOMPARE(program.detail().doc(), "4712");
  }
};

CARTONPICK_TEST(masterViewControllerRulesTest);
#include "masterViewControllerRules_test.moc"
