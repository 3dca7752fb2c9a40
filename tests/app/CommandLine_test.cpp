#include "app/CommandLine.h"

#include "support/TestClass.h"

#include <QTest>

class CommandLineTest : public QObject {
  Q_OBJECT

 private slots:
  void cleanup() {
    qunsetenv("CARTONPICK_SERVICE_HOST");
    qunsetenv("CARTONPICK_HOME");
  }

  void withoutOptionsThereIsNoHostAndTheHomeIsTheDefault() {
    const CommandLine options = CommandLine::parse({"cartonpick"});
    QCOMPARE(options.serviceHost, QString());
    QVERIFY(!options.demo);
    QCOMPARE(options.folders().home, Folders::ofThisUser().home);
  }

  void environmentVariablesSetTheOptions() {
    qputenv("CARTONPICK_SERVICE_HOST", "picking.example:8080");
    qputenv("CARTONPICK_HOME", "/srv/picking");
    const CommandLine options = CommandLine::parse({"cartonpick"});
    QCOMPARE(options.serviceHost, "picking.example:8080");
    QCOMPARE(options.folders().home, "/srv/picking");
  }

  void anOptionOverridesTheEnvironment() {
    qputenv("CARTONPICK_SERVICE_HOST", "picking.example:8080");
    qputenv("CARTONPICK_HOME", "/srv/picking");
    const CommandLine options =
        CommandLine::parse({"cartonpick", "--service-host", "other:1", "--home", "/srv/other"});
    QCOMPARE(options.serviceHost, "other:1");
    QCOMPARE(options.folders().documents(), "/srv/other/Documents");
  }

  void theDemoUsesASeparateHome() {
    const CommandLine options = CommandLine::parse({"cartonpick", "--demo"});
    QVERIFY(options.demo);
    QCOMPARE(options.folders().home, Folders::ofThisUser().home + "/demo");
  }

  void aDemoStartedLaterUsesASubfolderOfTheGivenHome() {
    const CommandLine options = CommandLine::parse({"cartonpick", "--home", "/srv/picking"});
    QVERIFY(options.withDemo().demo);
    QCOMPARE(options.withDemo().folders().home, "/srv/picking/demo");
  }

  void byDefaultTheWindowHasAFrameAndNoKeyboard() {
    const CommandLine options = CommandLine::parse({"cartonpick"});
    QVERIFY(!options.fullScreen);
    QVERIFY(!options.onScreenKeyboard);
  }

  void theDemoKeepsFullScreenAndTheOnScreenKeyboard() {
    const CommandLine options =
        CommandLine::parse({"cartonpick", "--fullscreen", "--on-screen-keyboard"}).withDemo();
    QVERIFY(options.fullScreen);
    QVERIFY(options.onScreenKeyboard);
  }
};

CARTONPICK_TEST(CommandLineTest);
#include "CommandLine_test.moc"
