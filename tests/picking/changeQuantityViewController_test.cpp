#include "picking/changeQuantityViewController.h"

#include "support/TestClass.h"
#include "support/TestEnvironment.h"
#include "support/Views.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <array>
#include <memory>

namespace {

/// Records what the keypad reports.
class Opener : public ViewController, public ChangeQuantityDelegate {
 public:
  explicit Opener(Environment &environment) : ViewController({}, environment) {}

  void CloseViewControllerWithGetQtyAtRow(std::int32_t row, std::int32_t currentQty,
                                          std::int32_t addQty) override {
    reports.append({row, currentQty, addQty});
    wasOpenAtReport = presentedViewController() != nullptr;
  }

  QList<std::array<std::int32_t, 3>> reports;
  bool wasOpenAtReport = false;
};

/// A keypad for a line with the picked quantity `qty`, opened as the detail pane opens it.
class OpenKeypad : public TestEnvironment {
 public:
  explicit OpenKeypad(const QString &qty = QStringLiteral("3"))
      : opener(environment), keypad(new changeQuantityViewController(environment)) {
    opener.presentViewController(keypad, ViewController::PresentationStyle::FormSheet);
    keypad->setDisplayValues(QStringLiteral("85123A"), QStringLiteral("29001"),
                             QStringLiteral("HANGING HEART"), qty, QStringLiteral("20"));
    keypad->setDelegate(&opener);
    keypad->setRow(7);
  }

  /// Returns true if the keypad allows `replacement` to replace `length` characters of `before`,
  /// starting at `location`.
  [[nodiscard]] bool accepts(const QString &before, qsizetype location, qsizetype length,
                             const QString &replacement) const {
    keypad->txtNewQty->setText(before);
    return keypad->shouldChangeCharactersInRange(*keypad->txtNewQty, location, length, replacement);
  }

  Opener opener;
  QPointer<changeQuantityViewController> keypad;
};

}  // namespace

class changeQuantityViewControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void theEntryFieldHasTheKeyboardFocus() {
    const OpenKeypad open;
    QVERIFY(open.keypad->txtNewQty->isFirstResponder());
  }

  void everyDigitKeyHasItsDigitAndAThickBorder() {
    const OpenKeypad open;
    const std::array keys{open.keypad->btn0, open.keypad->btn1, open.keypad->btn2,
                          open.keypad->btn3, open.keypad->btn4, open.keypad->btn5,
                          open.keypad->btn6, open.keypad->btn7, open.keypad->btn8,
                          open.keypad->btn9};
    for (std::size_t digit = 0; digit < keys.size(); ++digit) {
      QCOMPARE(keys.at(digit)->title(), QString::number(digit));
      QCOMPARE(keys.at(digit)->borderWidth(), 3.0);
    }
    QCOMPARE(open.keypad->btnNegative->borderWidth(), 1.0);
  }

  void theValuesAreShownUnchanged() {
    const OpenKeypad open;
    open.keypad->txtNewQty->setText(QStringLiteral("12"));
    open.keypad->setDisplayValues(QStringLiteral(" 8\"5"), QString(),
                                  QStringLiteral("<b>HEART</b>"), QStringLiteral(" 7 pieces"),
                                  QStringLiteral("2.5"));
    QCOMPARE(textsOf({open.keypad->lblItemCode, open.keypad->lblItemBarcode,
                      open.keypad->lblItemDescription, open.keypad->lblCurrentQty,
                      open.keypad->lblTotalQty, open.keypad->lblOrderQty}),
             QStringList({" 8\"5", "", "<b>HEART</b>", " 7 pieces", " 7 pieces", "2.5"}));
    QCOMPARE(open.keypad->txtNewQty->text(), QString());
  }

  void aDigitKeyAppendsItsDigit() {
    const OpenKeypad open;
    open.keypad->btnNumTouched(open.keypad->btn1);
    QCOMPARE(open.keypad->txtNewQty->text(), "1");
    QCOMPARE(open.keypad->lblTotalQty->text(), "4");
    open.keypad->btnNumTouched(open.keypad->btn0);
    QCOMPARE(open.keypad->txtNewQty->text(), "10");
    QCOMPARE(open.keypad->lblTotalQty->text(), "13");
  }

  void digitKeysHaveNoLengthLimit() {
    const OpenKeypad open;
    open.keypad->txtNewQty->edit(QStringLiteral("1234"));
    open.keypad->btnNumTouched(open.keypad->btn5);
    QCOMPARE(open.keypad->txtNewQty->text(), "12345");
    QCOMPARE(open.keypad->lblTotalQty->text(), "12348");
  }

  void theMinusKeyPrependsAMinus() {
    const OpenKeypad open;
    open.keypad->btnNegativeTouched();
    QCOMPARE(open.keypad->txtNewQty->text(), "-");
    QCOMPARE(open.keypad->lblTotalQty->text(), "3");
    open.keypad->btnNumTouched(open.keypad->btn5);
    open.keypad->btnNegativeTouched();
    QCOMPARE(open.keypad->txtNewQty->text(), "-5");
    QCOMPARE(open.keypad->lblTotalQty->text(), "-2");
  }

  void theMinusKeyNegatesTheEnteredDigits() {
    const OpenKeypad open;
    open.keypad->txtNewQty->edit(QStringLiteral("12"));
    open.keypad->btnNegativeTouched();
    QCOMPARE(open.keypad->txtNewQty->text(), "-12");
    QCOMPARE(open.keypad->lblTotalQty->text(), "-9");
  }

  void theMinusKeyAddsNoSecondMinus() {
    const OpenKeypad open;
    open.keypad->txtNewQty->edit(QStringLiteral("1-2"));
    open.keypad->btnNegativeTouched();
    QCOMPARE(open.keypad->txtNewQty->text(), "1-2");
  }

  void theTotalFollowsEveryEdit_data() {
    QTest::addColumn<QString>("current");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("total");
    QTest::newRow("nothing") << QStringLiteral("3") << QString() << QStringLiteral("3");
    QTest::newRow("a quantity") << QStringLiteral("0") << QStringLiteral("4")
                                << QStringLiteral("4");
    QTest::newRow("down to zero") << QStringLiteral("3") << QStringLiteral("-3")
                                  << QStringLiteral("0");
    QTest::newRow("below zero") << QStringLiteral("2") << QStringLiteral("-5")
                                << QStringLiteral("-3");
    QTest::newRow("a minus alone")
        << QStringLiteral("3") << QStringLiteral("-") << QStringLiteral("3");
    QTest::newRow("digits up to a letter")
        << QStringLiteral("3") << QStringLiteral("7a9") << QStringLiteral("10");
    QTest::newRow("a sum beyond the range")
        << QStringLiteral("1") << QStringLiteral("2147483647") << QStringLiteral("-2147483648");
  }
  void theTotalFollowsEveryEdit() {
    QFETCH(QString, current);
    QFETCH(QString, entry);
    const OpenKeypad open(current);
    open.keypad->txtNewQty->edit(entry);
    QTEST(open.keypad->lblTotalQty->text(), "total");
  }

  void aKeyboardEditMustAddADigitAndLeaveAtMostFourCharacters_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("location");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("replacement");
    QTest::addColumn<bool>("accepted");
    const QString none;
    const QString four = QStringLiteral("1234");
    QTest::newRow("a first digit") << none << 0 << 0 << QStringLiteral("7") << true;
    QTest::newRow("a fourth digit")
        << QStringLiteral("123") << 3 << 0 << QStringLiteral("4") << true;
    QTest::newRow("a fifth digit") << four << 4 << 0 << QStringLiteral("5") << false;
    QTest::newRow("a digit over a digit") << four << 1 << 1 << QStringLiteral("9") << true;
    QTest::newRow("digits over all") << four << 0 << 4 << QStringLiteral("9876") << true;
    QTest::newRow("too many over all") << four << 0 << 4 << QStringLiteral("98765") << false;
    QTest::newRow("a minus") << none << 0 << 0 << QStringLiteral("-") << false;
    QTest::newRow("a letter") << none << 0 << 0 << QStringLiteral("a") << false;
    QTest::newRow("a digit of another script")
        << none << 0 << 0 << QStringLiteral("\u0663") << false;
    QTest::newRow("a digit among letters") << none << 0 << 0 << QStringLiteral("7a") << true;
    QTest::newRow("a minus with a digit") << none << 0 << 0 << QStringLiteral("-7") << true;
    QTest::newRow("four with one digit") << none << 0 << 0 << QStringLiteral("ab1c") << true;
    QTest::newRow("five at once") << none << 0 << 0 << QStringLiteral("12345") << false;
    QTest::newRow("deleting the last") << four << 3 << 1 << none << false;
    QTest::newRow("deleting all") << four << 0 << 4 << none << false;
    QTest::newRow("nothing at all") << none << 0 << 0 << none << false;
    QTest::newRow("beyond the end")
        << QStringLiteral("12") << 2 << 1 << QStringLiteral("3") << false;
    QTest::newRow("before the end of five")
        << QStringLiteral("12345") << 0 << 2 << QStringLiteral("9") << true;
  }
  void aKeyboardEditMustAddADigitAndLeaveAtMostFourCharacters() {
    QFETCH(QString, before);
    QFETCH(int, location);
    QFETCH(int, length);
    QFETCH(QString, replacement);
    const OpenKeypad open;
    QTEST(open.accepts(before, location, length, replacement), "accepted");
  }

  void theEntryFieldAsksTheKeypadBeforeEveryEdit() {
    const OpenKeypad open;
    open.keypad->txtNewQty->setText(QStringLiteral("12"));
    QVERIFY(open.keypad->txtNewQty->acceptsEdit(QStringLiteral("123"), 2, 2));
    QVERIFY(!open.keypad->txtNewQty->acceptsEdit(QStringLiteral("1"), 2, 2));
    QVERIFY(open.keypad->txtNewQty->acceptsEdit(QStringLiteral("1"), 0, 2));
  }

  void okReportsTheRowAndTheCurrentAndAddedQuantities_data() {
    QTest::addColumn<QString>("current");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("c");
    QTest::addColumn<int>("a");
    QTest::newRow("nothing added") << QStringLiteral("3") << QString() << 3 << 0;
    QTest::newRow("added") << QStringLiteral("0") << QStringLiteral("4") << 0 << 4;
    QTest::newRow("removed") << QStringLiteral("5") << QStringLiteral("-4") << 5 << -4;
    QTest::newRow("a digit among letters") << QStringLiteral("3") << QStringLiteral("7a") << 3 << 7;
  }
  void okReportsTheRowAndTheCurrentAndAddedQuantities() {
    QFETCH(QString, current);
    QFETCH(QString, entry);
    QFETCH(int, c);
    QFETCH(int, a);
    OpenKeypad open(current);
    open.keypad->txtNewQty->edit(entry);
    open.keypad->btnOKTouched();
    QCOMPARE(open.opener.reports, (QList<std::array<std::int32_t, 3>>{{7, c, a}}));
    QVERIFY(open.opener.wasOpenAtReport);
    QCOMPARE(open.opener.presentedViewController(), nullptr);
    QTRY_VERIFY(open.keypad.isNull());
  }

  void okReportsNothingIfTheTotalIsBelowOne_data() {
    QTest::addColumn<QString>("current");
    QTest::addColumn<QString>("entry");
    QTest::newRow("zero") << QStringLiteral("0") << QString();
    QTest::newRow("down to zero") << QStringLiteral("3") << QStringLiteral("-3");
    QTest::newRow("below zero") << QStringLiteral("2") << QStringLiteral("-5");
    QTest::newRow("wrapped around") << QStringLiteral("2147483647") << QStringLiteral("1");
  }
  void okReportsNothingIfTheTotalIsBelowOne() {
    QFETCH(QString, current);
    QFETCH(QString, entry);
    OpenKeypad open(current);
    open.keypad->txtNewQty->edit(entry);
    open.keypad->btnOKTouched();
    QVERIFY(open.opener.reports.isEmpty());
    QCOMPARE(open.opener.presentedViewController(), nullptr);
    QCOMPARE(open.environment.alerts.count(), 0);
  }

  void cancelClosesWithoutReporting() {
    const OpenKeypad open;
    open.keypad->txtNewQty->edit(QStringLiteral("4"));
    open.keypad->btnCancelTouched();
    QVERIFY(open.opener.reports.isEmpty());
    QCOMPARE(open.opener.presentedViewController(), nullptr);
  }

  void withoutADelegateOkOnlyCloses() {
    OpenKeypad open;
    auto delegate = std::make_unique<Opener>(open.environment);
    open.keypad->setDelegate(delegate.get());
    delegate.reset();
    open.keypad->txtNewQty->edit(QStringLiteral("4"));
    open.keypad->btnOKTouched();
    QVERIFY(open.opener.reports.isEmpty());
    QCOMPARE(open.opener.presentedViewController(), nullptr);
  }

  void theReturnKeyDoesNothing() {
    const OpenKeypad open;
    open.keypad->txtNewQty->edit(QStringLiteral("4"));
    open.keypad->txtNewQty->pressReturn();
    QVERIFY(open.opener.reports.isEmpty());
    QCOMPARE(open.opener.presentedViewController(), open.keypad.data());
    QCOMPARE(open.keypad->txtNewQty->text(), "4");
  }

  void unusedActionsHaveNoEffect() {
    const OpenKeypad open;
    open.keypad->txtNewQty->edit(QStringLiteral("4"));
    open.keypad->stepperValueChanged();
    open.keypad->textFieldDidBeginEditing(*open.keypad->txtNewQty);
    QCOMPARE(open.keypad->txtNewQty->text(), "4");
    QCOMPARE(open.keypad->lblTotalQty->text(), "7");
    QVERIFY(open.opener.reports.isEmpty());
  }

  void theRowCanBeSet() {
    const OpenKeypad open;
    QCOMPARE(open.keypad->row(), 7);
  }
};

CARTONPICK_TEST(changeQuantityViewControllerTest);
#include "changeQuantityViewController_test.moc"
