#include "history/HistoryViewController.h"
#include "support/RuleSets.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QPointer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

class startViewControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void isTheFirstScreenAndHasTheLaunchContext() {
    TestProgram program;
    QCOMPARE(program.start().identifier(), "startViewController");
    QCOMPARE(program.start().presentedViewController(), nullptr);
    QCOMPARE(program.start().managedObjectContext(), &program.context());
  }

  void showsWhichOrderServiceIsUsed() {
    TestProgram program;
    QCOMPARE(program.start().lblServiceHost->text(), "Order service: " + program.service.host());
    QVERIFY(!program.start().btnDemo->isEnabled());
  }

  void withoutAnOrderServiceItOffersTheDemo() {
    TestEnvironment test;
    startViewController start(test.environment);
    start.loadViewIfNeeded();
    QVERIFY(start.lblServiceHost->text().contains("--service-host"));
    QVERIFY(start.btnDemo->isEnabled());
    QSignalSpy requests(&start, &startViewController::demoRequested);
    start.btnDemoTouched();
    QCOMPARE(requests.count(), 1);
  }

  void saysOnlyWhenTheCarefulRulesAreInUse() {
    QVERIFY(TestProgram(PickingRules::standard()).start().lblRules->isHidden());
    const TestProgram careful(PickingRules::careful());
    QVERIFY(!careful.start().lblRules->isHidden());
    QCOMPARE(careful.start().lblRules->text(), "The careful rules are in use.");
  }

  void openingThePickingScreenPassesTheContextToBothPanes() {
    TestProgram program;
    program.start().performSegueWithIdentifier(QStringLiteral("segueToSplitView"));
    QCOMPARE(program.start().presentedViewController()->identifier(), "splitViewController");
    QCOMPARE(program.master().managedObjectContext(), &program.context());
    QCOMPARE(program.detail().managedObjectContext(), &program.context());
  }

  void openingTheHistoryPassesItTheContext() {
    TestProgram program;
    program.start().performSegueWithIdentifier(QStringLiteral("segueHistory"));
    QCOMPARE(history(program)->managedObjectContext(), &program.context());
  }

  void anUnknownSegueOpensNothing() {
    TestProgram program;
    program.start().performSegueWithIdentifier(QStringLiteral("segueElsewhere"));
    QCOMPARE(program.start().presentedViewController(), nullptr);
  }

  void anUnknownSeguePassesNoContext() {
    TestProgram program;
    HistoryViewController elsewhere(program.environment);
    Segue segue{QStringLiteral("segueElsewhere"), &elsewhere};
    program.start().prepareForSegue(segue);
    QCOMPARE(elsewhere.managedObjectContext(), nullptr);
    QVERIFY(!segue.isHeldBack);
  }

  void returningFromTheHistoryPassesTheContextBack() {
    TestProgram program;
    program.start().performSegueWithIdentifier(QStringLiteral("segueHistory"));
    const QPointer<HistoryViewController> screen = history(program);
    program.start().setManagedObjectContext(nullptr);
    screen->performSegueWithIdentifier(QStringLiteral("returnFromHistoryToStart"));
    QCOMPARE(program.start().presentedViewController(), nullptr);
    QCOMPARE(program.start().managedObjectContext(), &program.context());
    QTRY_VERIFY(screen.isNull());
  }

  void returningFromThePickingScreenPassesTheContextBack() {
    TestProgram program;
    program.enterPicking();
    const QPointer<ViewController> screen = &program.split();
    program.start().setManagedObjectContext(nullptr);
    program.master().performSegueWithIdentifier(QStringLiteral("returnFromPickingToStart"));
    program.answerTopAlert(0);
    QCOMPARE(program.start().presentedViewController(), nullptr);
    QCOMPARE(program.start().managedObjectContext(), &program.context());
    QTRY_VERIFY(screen.isNull());
  }

  void onlyTheCarefulRulesReportAStoreThatCannotBeUsed_data() { addRuleSets(); }
  void onlyTheCarefulRulesReportAStoreThatCannotBeUsed() {
    QFETCH(bool, isCareful);
    TestEnvironment test(rulesOf(isCareful));
    QVERIFY(QDir().mkdir(test.storePath()));
    const QRegularExpression reason("^Store .* not opened: (.+)$");
    QTest::ignoreMessage(QtWarningMsg, reason);
    QTest::ignoreMessage(QtWarningMsg, reason);
    vekAppDelegate delegate(test.environment);
    delegate.didFinishLaunchingWithOptions();
    const auto &start =
        *qobject_cast<startViewController *>(delegate.window()->rootViewController());
    QCOMPARE(start.btnPicking->isEnabled(), !isCareful);
    QCOMPARE(start.lblStore->isHidden(), !isCareful);
    QCOMPARE(start.lblStore->text(),
             isCareful ? "Picking is not possible, because the store cannot be used: "
                         "QIR_Pick.sqlite: it is not a regular file."
                       : "");
  }

  void aUsableStoreIsNotReported_data() { addRuleSets(); }
  void aUsableStoreIsNotReported() {
    QFETCH(bool, isCareful);
    const TestProgram program(rulesOf(isCareful));
    QVERIFY(program.start().btnPicking->isEnabled());
    QVERIFY(program.start().lblStore->isHidden());
  }

 private:
  static HistoryViewController *history(const TestProgram &program) {
    return qobject_cast<HistoryViewController *>(program.start().presentedViewController());
  }
};

CARTONPICK_TEST(startViewControllerTest);
#include "startViewController_test.moc"
