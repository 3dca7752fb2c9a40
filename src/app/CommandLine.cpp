#include "app/CommandLine.h"

#include "service/ServiceAddress.h"

#include <QCommandLineParser>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

const QString kDemoFolder = QStringLiteral("/demo");

QString valueOr(const QCommandLineParser &parser, const QCommandLineOption &option,
                const char *variable) {
  return parser.isSet(option) ? parser.value(option) : qEnvironmentVariable(variable);
}

[[noreturn]] void refuse(const QString &reason) {
  std::fprintf(stderr, "cartonpick: %s\n", qUtf8Printable(reason));
  std::exit(EXIT_FAILURE);
}

/// Prints the reason and ends the process if the service host of `options` cannot be used.
void checkServiceHost(const CommandLine &options, bool isFromOption) {
  const auto objection = options.serviceHost.isEmpty()
                             ? std::nullopt
                             : ServiceAddress::objectionTo(options.serviceHost);
  if (objection) {
    const QString source =
        isFromOption ? QStringLiteral("--service-host") : QStringLiteral("CARTONPICK_SERVICE_HOST");
    refuse(QStringLiteral("%1 \"%2\": %3.").arg(source, options.serviceHost, *objection));
  }
}

/// The rules named `name`; the standard ones if it is a variable that is empty or not set. Ends the
/// process if there are no such rules.
PickingRules rulesNamed(const QString &name, bool isFromOption) {
  if (name.isEmpty() && !isFromOption) {
    return PickingRules::standard();
  }
  const auto rules = PickingRules::named(name);
  if (!rules) {
    const QString source =
        isFromOption ? QStringLiteral("--rules") : QStringLiteral("CARTONPICK_RULES");
    refuse(
        QStringLiteral("%1 \"%2\": it has to be \"standard\" or \"careful\".").arg(source, name));
  }
  return *rules;
}

}  // namespace

CommandLine CommandLine::withDemo() const {
  const QString demoHome = home.isEmpty() ? QString() : home + kDemoFolder;
  CommandLine options = *this;
  options.home = demoHome;
  options.demo = true;
  return options;
}

Folders CommandLine::folders() const {
  if (!home.isEmpty()) {
    return {home};
  }
  const Folders own = Folders::ofThisUser();
  return demo ? Folders{own.home + kDemoFolder} : own;
}

CommandLine CommandLine::parse(const QStringList &arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Picks outgoing deliveries carton by carton.\n\n"
                     "Environment variables: CARTONPICK_SERVICE_HOST for --service-host, "
                     "CARTONPICK_HOME for --home and CARTONPICK_RULES for --rules. An option "
                     "overrides its variable."));
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption serviceHost(
      QStringLiteral("service-host"),
      QStringLiteral("The order service to talk to. An IPv6 address is "
                     "in brackets: [::1]:8080."),
      QStringLiteral("HOST[:PORT]"));
  const QCommandLineOption home(
      QStringLiteral("home"),
      QStringLiteral("The folder for all data, instead of this user's data folder."),
      QStringLiteral("DIR"));
  const QCommandLineOption rules(
      QStringLiteral("rules"),
      QStringLiteral("The rules of a picking: standard, which is the default, or careful."),
      QStringLiteral("SET"));
  const QCommandLineOption demo(
      QStringLiteral("demo"),
      QStringLiteral("Run on demo deliveries, with a separate order service."));
  const QCommandLineOption fullScreen(
      QStringLiteral("fullscreen"),
      QStringLiteral(
          "Fill the screen, without a window frame, for a tablet that runs only this program."));
  const QCommandLineOption onScreenKeyboard(
      QStringLiteral("on-screen-keyboard"),
      QStringLiteral("Show a keyboard on the screen, for a tablet without a physical one."));
  parser.addOptions({serviceHost, home, rules, demo, fullScreen, onScreenKeyboard});
  parser.process(arguments);
  if (!parser.positionalArguments().isEmpty()) {
    refuse(QStringLiteral("\"%1\" is not an option. --help lists the options.")
               .arg(parser.positionalArguments().constFirst()));
  }
  CommandLine options{
      .serviceHost = valueOr(parser, serviceHost, "CARTONPICK_SERVICE_HOST"),
      .home = valueOr(parser, home, "CARTONPICK_HOME"),
      .rules = rulesNamed(valueOr(parser, rules, "CARTONPICK_RULES"), parser.isSet(rules)),
      .demo = parser.isSet(demo),
      .fullScreen = parser.isSet(fullScreen),
      .onScreenKeyboard = parser.isSet(onScreenKeyboard)};
  checkServiceHost(options, parser.isSet(serviceHost));
  return options;
}
