#include "platform/Window.h"

#include "support/TestEnvironment.h"

#include <QSignalSpy>
#include <QTest>

class WindowTest : public QObject {
  Q_OBJECT

 private slots:
  void aWindowShowsItsRootAlertsAndWork() {
    TestEnvironment test;
    ViewController root(QStringLiteral("root"), test.environment);
    const Window window(&root, &test.environment.alerts, &test.environment.busy);
    QCOMPARE(window.rootViewController(), &root);
    QCOMPARE(window.alerts(), &test.environment.alerts);
    QCOMPARE(window.busy(), &test.environment.busy);
  }

  void theStatusBarTurnsLight() {
    Window window(nullptr, nullptr, nullptr);
    const QSignalSpy changed(&window, &Window::statusBarStyleChanged);
    QVERIFY(!window.isStatusBarContentLight());
    window.setStatusBarStyle(Window::StatusBarStyle::LightContent);
    QVERIFY(window.isStatusBarContentLight());
    QCOMPARE(changed.size(), 1);
  }
};

QTEST_GUILESS_MAIN(WindowTest)
#include "Window_test.moc"
