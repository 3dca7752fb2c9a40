#include "app/CommandLine.h"
#include "app/DemoService.h"
#include "app/MainStoryboard.h"
#include "app/Screens.h"
#include "app/startViewController.h"
#include "app/vekAppDelegate.h"
#include "device/DesktopMailComposer.h"
#include "device/DesktopWakeLock.h"
#include "device/NetworkHttpClient.h"
#include "store/StoreLock.h"
#include "view/Environment.h"

#include <QDebug>
#include <QFile>
#include <QGuiApplication>
#include <QIcon>
#include <QLibraryInfo>

#include <algorithm>
#include <cstdlib>
#include <span>
#include <string_view>

namespace {

/// The event loop's exit code for a restart with the demo deliveries.
constexpr int kRestartWithDemo = 1000;

constexpr auto kInputMethod = "QT_IM_MODULE";
constexpr auto kKeyboardInWindow = "QT_VIRTUALKEYBOARD_DESKTOP_DISABLE";

/// Builds the environment for `options`. The display settings are read from the home folder of
/// `displayFolders`.
Environment environmentOf(const CommandLine &options, const Folders &displayFolders) {
  const Folders folders = options.folders();
  return {.clock = std::make_unique<SystemClock>(),
          .http = std::make_unique<NetworkHttpClient>(),
          .sounds = std::make_unique<DeviceSoundPlayer>(),
          .mail = std::make_unique<DesktopMailComposer>(folders),
          .wakeLock = std::make_unique<DesktopWakeLock>(),
          .display = std::make_unique<DisplaySettings>(displayFolders,
                                                       std::make_unique<SystemColourScheme>()),
          .folders = folders,
          .serviceHost = options.serviceHost,
          .rules = options.rules};
}

bool makeFolders(const Environment &environment) {
  const bool isMade = environment.folders.create();
  if (!isMade) {
    qCritical("The folder %s cannot be created.", qUtf8Printable(environment.folders.documents()));
  }
  return isMade;
}

bool hasScreenKeyboard() {
  return QFile::exists(QLibraryInfo::path(QLibraryInfo::QmlImportsPath) +
                       QStringLiteral("/QtQuick/VirtualKeyboard/qmldir"));
}

/// Shows `window` until it is closed. Returns the event loop's exit code.
int show(Window &window, const CommandLine &options) {
  window.fullScreen = options.fullScreen;
  window.onScreenKeyboard = options.onScreenKeyboard && hasScreenKeyboard();
  const Screens screens(window);
  return screens.quickWindow() == nullptr ? EXIT_FAILURE : QGuiApplication::exec();
}

/// Runs the program with the display settings from the home folder of `displayFolders`. Returns
/// the event loop's exit code, or EXIT_FAILURE if the program cannot start.
int run(const CommandLine &options, const Folders &displayFolders) {
  Environment environment = environmentOf(options, displayFolders);
  if (!makeFolders(environment)) {
    return EXIT_FAILURE;
  }
  StoreLock lock(environment.folders);
  if (!lock.acquire()) {
    qCritical(lock.isHeldByAnother() ? "Another program uses the store in %s."
                                     : "The store in %s cannot be locked.",
              qUtf8Printable(environment.folders.documents()));
    return EXIT_FAILURE;
  }
  DemoService demo;
  if (options.demo) {
    environment.serviceHost = demo.start();
    if (environment.serviceHost.isEmpty()) {
      environment.alerts.show(
          {.title = QStringLiteral("Could not start the demo"),
           .message = QStringLiteral("The demo order service did not start. It comes with the "
                                     "package cartonpick-orders.")});
    }
  }
  if (options.onScreenKeyboard && !hasScreenKeyboard()) {
    environment.alerts.show(
        {.title = QStringLiteral("No on-screen keyboard"),
         .message = QStringLiteral("The QML module Qt Virtual Keyboard is not installed.")});
  }
  fillMainStoryboard(environment.storyboard);
  vekAppDelegate delegate(environment);
  delegate.didFinishLaunchingWithOptions();
  if (auto *start = qobject_cast<startViewController *>(delegate.window()->rootViewController())) {
    QObject::connect(start, &startViewController::demoRequested, start,
                     [] { QCoreApplication::exit(kRestartWithDemo); });
  }
  return show(*delegate.window(), options);
}

/// Selects the on-screen keyboard if `arguments` request it. Call it before QGuiApplication is
/// created, which loads the input method.
void chooseInputMethod(const std::span<char *> arguments) {
  const bool wantsKeyboard = std::any_of(
      arguments.begin(), arguments.end(),
      [](const char *argument) { return std::string_view(argument) == "--on-screen-keyboard"; });
  if (wantsKeyboard) {
    qputenv(kInputMethod, "qtvirtualkeyboard");
    // Shows the keyboard inside the program's window instead of in a separate one.
    qputenv(kKeyboardInWindow, "1");
  }
}

/// Returns true if `arguments` request the help or the version, which need no display.
bool asksForText(std::span<char *> arguments) {
  return std::any_of(arguments.begin(), arguments.end(), [](std::string_view argument) {
    return argument == "-h" || argument == "--help" || argument == "--help-all" ||
           argument == "-v" || argument == "--version";
  });
}

}  // namespace

int main(int argc, char *argv[]) {
  QCoreApplication::setApplicationName(QStringLiteral("CartonPick"));
  QCoreApplication::setApplicationVersion(QStringLiteral(CARTONPICK_VERSION));
  const std::span<char *> arguments(argv, static_cast<std::size_t>(argc));
  if (asksForText(arguments)) {
    const QCoreApplication application(argc, argv);
    CommandLine::parse(QCoreApplication::arguments());
    return EXIT_SUCCESS;
  }
  chooseInputMethod(arguments);
  const QGuiApplication application(argc, argv);
  // Child processes, such as the mail program, must not inherit these.
  qunsetenv(kInputMethod);
  qunsetenv(kKeyboardInWindow);
  // The desktop entry and the installed icon share this name.
  QGuiApplication::setDesktopFileName(QStringLiteral("io.github.cartonpick.CartonPick"));
  QGuiApplication::setWindowIcon(QIcon::fromTheme(QGuiApplication::desktopFileName()));
  const CommandLine options = CommandLine::parse(QCoreApplication::arguments());
  const Folders looks = options.folders();
  const int result = run(options, looks);
  return result == kRestartWithDemo ? run(options.withDemo(), looks) : result;
}
