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
                     "Environment variables: CARTONPICK_SERVICE_HOST for --service-host and "
                     "CARTONPICK_HOME for --home. An option overrides its variable."));
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
  parser.addOptions({serviceHost, home, demo, fullScreen, onScreenKeyboard});
  parser.process(arguments);
  if (!parser.positionalArguments().isEmpty()) {
    refuse(QStringLiteral("\"%1\" is not an option. --help lists the options.")
               .arg(parser.positionalArguments().constFirst()));
  }
  CommandLine options{.serviceHost = valueOr(parser, serviceHost, "CARTONPICK_SERVICE_HOST"),
                      .home = valueOr(parser, home, "CARTONPICK_HOME"),
                      .demo = parser.isSet(demo),
                      .fullScreen = parser.isSet(fullScreen),
                      .onScreenKeyboard = parser.isSet(onScreenKeyboard)};
  checkServiceHost(options, parser.isSet(serviceHost));
  return options;
}
