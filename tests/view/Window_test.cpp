#include "view/Window.h"

#include "support/TestEnvironment.h"

#include <QSignalSpy>
#include <QTest>

class WindowTest : public QObject {
  Q_OBJECT

 private slots:
  void aWindowShowsItsRootAlertsAndWork() {
    TestEnvironment test;
    ViewController root(QStringLiteral("root"), test.environment);
    const Window window(root, test.environment);
    QCOMPARE(window.rootViewController(), &root);
    QCOMPARE(window.alerts(), &test.environment.alerts);
    QCOMPARE(window.busy(), &test.environment.busy);
  }

  void aRefusedScanIsHeardAndRemembered() {
    TestEnvironment test;
    ViewController root(QStringLiteral("root"), test.environment);
    Window window(root, test.environment);
    window.refuseScan(QStringLiteral("4711"));
    QCOMPARE(test.sounds->played(), std::vector<int>{SoundPlayer::kErrorTone});
    const Scan scan = test.environment.scans.scans().front();
    QCOMPARE(scan.code, QStringLiteral("4711"));
    QCOMPARE(scan.outcome, ScanOutcome::Refused);
    QCOMPARE(scan.time, QTime(10, 12, 5));
  }

  void theStatusBarTurnsLight() {
    TestEnvironment test;
    ViewController root(QStringLiteral("root"), test.environment);
    Window window(root, test.environment);
    const QSignalSpy changed(&window, &Window::statusBarStyleChanged);
    QVERIFY(!window.isStatusBarContentLight());
    window.setStatusBarStyle(Window::StatusBarStyle::LightContent);
    QVERIFY(window.isStatusBarContentLight());
    QCOMPARE(changed.size(), 1);
  }
};

QTEST_GUILESS_MAIN(WindowTest)
#include "Window_test.moc"
