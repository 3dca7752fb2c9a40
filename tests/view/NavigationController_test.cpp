#include "view/NavigationController.h"

#include "support/TestClass.h"
#include "support/TestEnvironment.h"

#include <QTest>

class NavigationControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void theTopScreenIsAChild() {
    TestEnvironment test;
    auto *top = new ViewController(QStringLiteral("master"), test.environment);
    const NavigationController navigation(top, test.environment, nullptr);
    QCOMPARE(navigation.topViewController(), top);
    QCOMPARE(navigation.childViewControllers(), QList<ViewController *>({top}));
    QCOMPARE(top->parentViewController(), &navigation);
  }
};

CARTONPICK_TEST(NavigationControllerTest);
#include "NavigationController_test.moc"
