#include "app/CommandLine.h"

#include "support/TestClass.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <cstdlib>

namespace {

constexpr auto kParse = "--parse";

int parseArguments(const QStringList &arguments) {
  CommandLine::parse(QStringList("cartonpick") + arguments);
  return EXIT_SUCCESS;
}

/// Parses `arguments` in another process. Returns its message on standard error, or an empty string
/// if it accepts them.
QString refusalOf(const QStringList &arguments) {
  QProcess process;
  process.start(QCoreApplication::applicationFilePath(), QStringList(kParse) + arguments);
  process.waitForFinished();
  const QString text = QString::fromUtf8(process.readAllStandardError()).trimmed();
  return process.exitCode() == EXIT_SUCCESS ? QString() : text;
}

}  // namespace

class CommandLineTest : public QObject {
  Q_OBJECT

 private slots:
  void cleanup() {
    qunsetenv("CARTONPICK_SERVICE_HOST");
    qunsetenv("CARTONPICK_HOME");
    qunsetenv("CARTONPICK_RULES");
  }

  void withoutOptionsThereIsNoHostAndTheDefaultHomeIsUsed() {
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

  void fullScreenAndTheOnScreenKeyboardAreOffByDefault() {
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

  void anInvalidHostIsRefused() {
    QCOMPARE(
        refusalOf({"--service-host", "http://picking.local"}),
        "cartonpick: --service-host \"http://picking.local\": it has to be without \"http://\".");
    QCOMPARE(refusalOf({"--service-host", "[::1]:8080"}), QString());
  }

  void anInvalidHostInTheEnvironmentIsRefused() {
    qputenv("CARTONPICK_SERVICE_HOST", "127.0.0.1:99999");
    QVERIFY(refusalOf({}).startsWith("cartonpick: CARTONPICK_SERVICE_HOST \"127.0.0.1:99999\": "));
    QCOMPARE(refusalOf({"--service-host", "127.0.0.1:8080"}), QString());
  }

  void theRulesAreStandardByDefault() {
    QCOMPARE(CommandLine::parse({"cartonpick"}).rules, PickingRules::standard());
    qputenv("CARTONPICK_RULES", "");
    QCOMPARE(CommandLine::parse({"cartonpick"}).rules, PickingRules::standard());
  }

  void anOptionOrAVariableChoosesTheRules() {
    QCOMPARE(CommandLine::parse({"cartonpick", "--rules", "careful"}).rules,
             PickingRules::careful());
    qputenv("CARTONPICK_RULES", "careful");
    QCOMPARE(CommandLine::parse({"cartonpick"}).rules, PickingRules::careful());
    QCOMPARE(CommandLine::parse({"cartonpick", "--rules", "standard"}).rules,
             PickingRules::standard());
  }

  void theDemoKeepsTheRules() {
    QCOMPARE(CommandLine::parse({"cartonpick", "--rules", "careful"}).withDemo().rules,
             PickingRules::careful());
  }

  void otherRulesAreRefused() {
    QCOMPARE(refusalOf({"--rules", "strict"}),
             "cartonpick: --rules \"strict\": it has to be \"standard\" or \"careful\".");
    QCOMPARE(refusalOf({"--rules", ""}),
             "cartonpick: --rules \"\": it has to be \"standard\" or \"careful\".");
    qputenv("CARTONPICK_RULES", "Careful");
    QCOMPARE(refusalOf({}),
             "cartonpick: CARTONPICK_RULES \"Careful\": it has to be \"standard\" or \"careful\".");
    QCOMPARE(refusalOf({"--rules", "careful"}), QString());
  }

  void aStrayArgumentIsRefused() {
    QCOMPARE(refusalOf({"4711"}),
             "cartonpick: \"4711\" is not an option. --help lists the options.");
  }
};

CARTONPICK_TEST(CommandLineTest);
CARTONPICK_TEST_CHILD(kParse, parseArguments);
#include "CommandLine_test.moc"
