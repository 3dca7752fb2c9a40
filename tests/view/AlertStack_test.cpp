#include "view/AlertStack.h"

#include "support/TestClass.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

/// Records every answer as "title:button".
class Listener : public QObject, public AlertViewDelegate {
 public:
  void clickedButtonAtIndex(const AlertView &alert, int buttonIndex) override {
    m_answers.append(QStringLiteral("%1:%2").arg(alert.title, QString::number(buttonIndex)));
  }
  [[nodiscard]] const QStringList &answers() const { return m_answers; }

 private:
  QStringList m_answers;
};

AlertView question(const QString &title, Listener *listener) {
  return {.title = title,
          .message = QStringLiteral("Really?"),
          .buttons = {QStringLiteral("NO"), QStringLiteral("YES")},
          .delegate = listener};
}

}  // namespace

class AlertStackTest : public QObject {
  Q_OBJECT

 private slots:
  void alertsAreInTheOrderInWhichTheyWereShown() {
    AlertStack stack;
    const QAbstractItemModelTester tester(&stack);
    const QSignalSpy countChanged(&stack, &AlertStack::countChanged);
    stack.show({.title = QStringLiteral("first")});
    stack.show({.title = QStringLiteral("second")});
    QCOMPARE(stack.count(), 2);
    QCOMPARE(stack.rowCount(), 2);
    QCOMPARE(countChanged.size(), 2);
    QCOMPARE(stack.data(stack.index(0), AlertStack::TitleRole), "first");
    QCOMPARE(stack.data(stack.index(1), AlertStack::TitleRole), "second");
  }

  void theModelHasARoleForEachPartOfAnAlert() {
    AlertStack stack;
    stack.show({.title = QStringLiteral("Close Picking"),
                .message = QStringLiteral("Are you sure?"),
                .buttons = {QStringLiteral("OK"), QStringLiteral("Cancel")},
                .cancelButtonIndex = 1});
    const QModelIndex alert = stack.index(0);
    const auto roles = stack.roleNames();
    QCOMPARE(alert.data(roles.key("title")), "Close Picking");
    QCOMPARE(alert.data(roles.key("message")), "Are you sure?");
    QCOMPARE(alert.data(roles.key("buttons")).toStringList().size(), 2);
    QCOMPARE(alert.data(roles.key("cancelButtonIndex")), 1);
    QVERIFY(!alert.data(Qt::DisplayRole).isValid());
  }

  void byDefaultAnAlertHasAnOkButtonThatIsItsCancelButton() {
    AlertStack stack;
    stack.show({.title = QStringLiteral("No order found")});
    QCOMPARE(stack.data(stack.index(0), AlertStack::ButtonsRole).toStringList(),
             QStringList(QStringLiteral("OK")));
    QCOMPARE(stack.data(stack.index(0), AlertStack::CancelButtonRole), 0);
  }

  void alertsCanBeAnsweredInAnyOrder() {
    AlertStack stack;
    const QAbstractItemModelTester tester(&stack);
    Listener listener;
    for (const char *title : {"a", "b", "c"}) {
      stack.show(question(QString::fromLatin1(title), &listener));
    }
    stack.answer(1, 1);
    QCOMPARE(stack.count(), 2);
    stack.answer(0, 0);
    QCOMPARE(stack.data(stack.index(0), AlertStack::TitleRole), "c");
    stack.answer(0, 1);
    QCOMPARE(stack.count(), 0);
    QCOMPARE(listener.answers().join(u' '), "b:1 a:0 c:1");
  }

  void answersToMissingAlertsOrButtonsAreIgnored() {
    AlertStack stack;
    Listener listener;
    stack.show(question(QStringLiteral("a"), &listener));
    stack.answer(1, 0);
    stack.answer(-1, 0);
    stack.answer(0, 2);
    stack.answer(0, -1);
    QCOMPARE(stack.count(), 1);
    QVERIFY(listener.answers().isEmpty());
  }

  void anActionReceivesTheButtonIndex() {
    AlertStack stack;
    QList<int> buttons;
    stack.show({.buttons = {QStringLiteral("OK"), QStringLiteral("Cancel")},
                .action = [&](int button) { buttons.append(button); }});
    stack.answer(0, 1);
    QCOMPARE(buttons, QList({1}));
  }

  void anAlertIsRemovedBeforeItsActionRuns() {
    AlertStack stack;
    int countInAction = -1;
    stack.show({.action = [&](int /*button*/) {
      countInAction = stack.count();
      stack.show({.title = QStringLiteral("next")});
    }});
    stack.answer(0, 0);
    QCOMPARE(countInAction, 0);
    QCOMPARE(stack.count(), 1);
    QCOMPARE(stack.alerts().front().title, "next");
  }

  void anAlertCanBeAnsweredAfterItsDelegateIsDestroyed() {
    AlertStack stack;
    auto listener = std::make_unique<Listener>();
    stack.show(question(QStringLiteral("a"), listener.get()));
    listener.reset();
    stack.answer(0, 0);
    QCOMPARE(stack.count(), 0);
  }
};

CARTONPICK_TEST(AlertStackTest);
#include "AlertStack_test.moc"
