#include "picking/changeQuantityViewController.h"
#include "support/RuleSets.h"
#include "support/TestClass.h"
#include "support/TestEnvironment.h"
#include "support/Views.h"

#include <QPointer>
#include <QTest>

namespace {

/// Records what the keypad reports.
class Opener : public ViewController, public ChangeQuantityDelegate {
 public:
  explicit Opener(Environment &environment) : ViewController({}, environment) {}

  void CloseViewControllerWithGetQtyAtRow(std::int32_t /*row*/, std::int32_t currentQty,
                                          std::int32_t addQty) override {
    totals << currentQty + addQty;
  }

  QList<int> totals;
};

/// A keypad on a line with 3 picked and 10 ordered.
class OpenKeypad : public TestEnvironment {
 public:
  explicit OpenKeypad(const PickingRules &rules)
      : TestEnvironment(rules),
        opener(environment),
        keypad(new changeQuantityViewController(environment)) {
    opener.presentViewController(keypad, ViewController::PresentationStyle::FormSheet);
    keypad->setDisplayValues({}, {}, {}, QStringLiteral("3"), QStringLiteral("10"));
    keypad->setDelegate(&opener);
  }

  void touchDigits(int count) const {
    for (int i = 0; i < count; ++i) {
      keypad->btnNumTouched(keypad->btn9);
    }
  }
  void confirm(const QString &entry) const {
    keypad->txtNewQty->edit(entry);
    keypad->btnOKTouched();
  }
  /// Returns true if the field takes `after` in place of `before`.
  [[nodiscard]] bool takes(const QString &before, const QString &after) const {
    keypad->txtNewQty->setText(before);
    return keypad->txtNewQty->acceptsEdit(after, 0, 0);
  }

  Opener opener;
  QPointer<changeQuantityViewController> keypad;
};

}  // namespace

/// The keypad under both sets of rules.
class changeQuantityViewControllerRulesTest : public QObject {
  Q_OBJECT

 private slots:
  void onlyTheCarefulKeysTakeAtMostFiveDigits_data() { addRuleSets(); }
  void onlyTheCarefulKeysTakeAtMostFiveDigits() {
    QFETCH(bool, isCareful);
    const OpenKeypad test(rulesOf(isCareful));
    test.touchDigits(11);
    QCOMPARE(test.keypad->txtNewQty->text(), QString(isCareful ? 5 : 11, u'9'));
    test.keypad->btnNegativeTouched();
    QCOMPARE(test.keypad->lblTotalQty->text(), isCareful ? "-99996" : "-2147483645");
  }

  void onlyTheCarefulKeypadHasADeleteKey_data() { addRuleSets(); }
  void onlyTheCarefulKeypadHasADeleteKey() {
    QFETCH(bool, isCareful);
    const OpenKeypad test(rulesOf(isCareful));
    QCOMPARE(test.keypad->btnDelete->isEnabled(), isCareful);
  }

  void theDeleteKeyDeletesTheLastCharacter() {
    const OpenKeypad test(PickingRules::careful());
    test.touchDigits(2);
    test.keypad->btnNegativeTouched();
    QStringList entries;
    for (int i = 0; i < 4; ++i) {
      test.keypad->btnDeleteTouched();
      entries << test.keypad->txtNewQty->text() + '=' + test.keypad->lblTotalQty->text();
    }
    QCOMPARE(entries, QStringList({"-9=-6", "-=3", "=3", "=3"}));
  }

  void theFieldTakesEditsByTheRules_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<bool>("standard");
    QTest::addColumn<bool>("careful");
    QTest::newRow("a fourth digit") << "123"
                                    << "1234" << true << true;
    QTest::newRow("a fifth digit") << "1234"
                                   << "12345" << false << true;
    QTest::newRow("a fifth digit after a minus") << "-1234"
                                                 << "-12345" << false << true;
    QTest::newRow("a sixth digit") << "12345"
                                   << "123456" << false << false;
    QTest::newRow("Backspace") << "12"
                               << "1" << false << true;
    QTest::newRow("Delete before the minus") << "-12"
                                             << "12" << false << true;
    QTest::newRow("a letter") << "1"
                              << "1a" << false << false;
    QTest::newRow("a pasted letter and digit") << ""
                                               << "7a" << true << false;
    QTest::newRow("a minus") << ""
                             << "-" << false << false;
  }
  void theFieldTakesEditsByTheRules() {
    QFETCH(QString, before);
    QFETCH(QString, after);
    QTEST(OpenKeypad(PickingRules::standard()).takes(before, after), "standard");
    QTEST(OpenKeypad(PickingRules::careful()).takes(before, after), "careful");
  }

  void onlyTheCarefulKeypadAsksBeforeMoreThanOrdered_data() { addRuleSets(); }
  void onlyTheCarefulKeypadAsksBeforeMoreThanOrdered() {
    QFETCH(bool, isCareful);
    const OpenKeypad test(rulesOf(isCareful));
    test.confirm(QStringLiteral("9"));
    QCOMPARE(textsOf(test.environment.alerts),
             isCareful ? QStringList("12 of 10 ordered?|This is more than ordered.|NO|YES")
                       : QStringList());
    QCOMPARE(test.opener.totals, isCareful ? QList<int>() : QList<int>({12}));
    QCOMPARE(test.opener.presentedViewController() != nullptr, isCareful);
  }

  void yesBooksMoreThanOrderedWithoutAskingAgain() {
    OpenKeypad test(PickingRules::careful());
    test.confirm(QStringLiteral("9"));
    test.answerTopAlert(1);
    QCOMPARE(test.opener.totals, QList<int>({12}));
    QCOMPARE(test.environment.alerts.count(), 0);
    QCOMPARE(test.opener.presentedViewController(), nullptr);
  }

  void noGoesBackToTheKeypadWithItsEntry() {
    OpenKeypad test(PickingRules::careful());
    test.confirm(QStringLiteral("9"));
    test.answerTopAlert(0);
    QCOMPARE(test.opener.totals, QList<int>());
    QCOMPARE(test.keypad->txtNewQty->text(), "9");
    test.confirm(QStringLiteral("7"));
    QCOMPARE(test.opener.totals, QList<int>({10}));
    QCOMPARE(test.environment.alerts.count(), 0);
  }

  void aSubtractedQuantityAsksNothing() {
    const OpenKeypad test(PickingRules::careful());
    test.keypad->setDisplayValues({}, {}, {}, QStringLiteral("15"), QStringLiteral("10"));
    test.confirm(QStringLiteral("-3"));
    QCOMPARE(test.opener.totals, QList<int>({12}));
  }

  void aQuestionWhoseKeypadIsGoneBooksNothing() {
    OpenKeypad test(PickingRules::careful());
    test.confirm(QStringLiteral("9"));
    test.keypad->btnCancelTouched();
    QTRY_VERIFY(test.keypad.isNull());
    test.answerTopAlert(1);
    QCOMPARE(test.opener.totals, QList<int>());
  }
};

CARTONPICK_TEST(changeQuantityViewControllerRulesTest);
#include "changeQuantityViewControllerRules_test.moc"
