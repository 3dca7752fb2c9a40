#include "view/Window.h"

#include "support/TestClass.h"
#include "support/TestEnvironment.h"

#include <QSignalSpy>
#include <QTest>

namespace {

class RecordingScreen : public ViewController {
 public:
  explicit RecordingScreen(Environment &environment)
      : ViewController(QStringLiteral("root"), environment) {}

  void noteRefusedScan(const QString &code) override { refusedScans += code; }

  QStringList refusedScans;
};

}  // namespace

class WindowTest : public QObject {
  Q_OBJECT

 private slots:
  void aWindowProvidesItsRootScreenAlertsAndBusyState() {
    TestEnvironment test;
    ViewController root(QStringLiteral("root"), test.environment);
    const Window window(root, test.environment);
    QCOMPARE(window.rootViewController(), &root);
    QCOMPARE(window.alerts(), &test.environment.alerts);
    QCOMPARE(window.busy(), &test.environment.busy);
  }

  void aRefusedScanPlaysTheErrorToneAndIsPassedToTheScreens() {
    TestEnvironment test;
    RecordingScreen root(test.environment);
    Window window(root, test.environment);
    window.refuseScan(QStringLiteral("4711"));
    QCOMPARE(test.sounds->played(), std::vector<int>{SoundPlayer::kErrorTone});
    QCOMPARE(root.refusedScans, QStringList("4711"));
  }

  void theStatusBarStyleCanBeSetToLight() {
    TestEnvironment test;
    ViewController root(QStringLiteral("root"), test.environment);
    Window window(root, test.environment);
    QCOMPARE(window.statusBarStyle(), Window::StatusBarStyle::Default);
    window.setStatusBarStyle(Window::StatusBarStyle::LightContent);
    QCOMPARE(window.statusBarStyle(), Window::StatusBarStyle::LightContent);
  }
};

CARTONPICK_TEST(WindowTest);
#include "Window_test.moc"
