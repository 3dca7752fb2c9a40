#include "app/CommandLine.h"
#include "app/DemoService.h"
#include "app/MainStoryboard.h"
#include "app/Screens.h"
#include "app/startViewController.h"
#include "app/store/StoreLock.h"
#include "app/vekAppDelegate.h"
#include "platform/DesktopMailComposer.h"
#include "platform/Environment.h"
#include "platform/NetworkHttpClient.h"

#include <QDebug>
#include <QGuiApplication>
#include <QQuickWindow>

#include <cstdlib>

namespace {

/// Says that the user wants to go on with the demo deliveries.
constexpr int kRestartWithDemo = 1000;

/// Runs the program until it is left; the result is that of the event loop.
int run(const CommandLine &options) {
  const Folders folders = options.folders();
  Environment environment{.clock = std::make_unique<SystemClock>(),
                          .http = std::make_unique<NetworkHttpClient>(),
                          .sounds = std::make_unique<DeviceSoundPlayer>(),
                          .mail = std::make_unique<DesktopMailComposer>(folders),
                          .folders = folders,
                          .serviceHost = options.serviceHost};
  if (!environment.folders.create()) {
    qCritical("The folder %s cannot be made.", qUtf8Printable(environment.folders.documents()));
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
      environment.alerts.show({.title = QStringLiteral("Could not start the demo"),
                               .message = QStringLiteral("The demo order service did not start.")});
    }
  }
  fillMainStoryboard(environment.storyboard);
  vekAppDelegate delegate(environment);
  delegate.didFinishLaunchingWithOptions();
  if (auto *start = qobject_cast<startViewController *>(delegate.window()->rootViewController())) {
    QObject::connect(start, &startViewController::demoRequested, start,
                     [] { QCoreApplication::exit(kRestartWithDemo); });
  }
  const Screens screens(*delegate.window());
  return screens.quickWindow() == nullptr ? EXIT_FAILURE : QGuiApplication::exec();
}

}  // namespace

int main(int argc, char *argv[]) {
  const QGuiApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("CartonPick"));
  QCoreApplication::setApplicationVersion(QStringLiteral(CARTONPICK_VERSION));
  CommandLine options = CommandLine::parse(QCoreApplication::arguments());
  int result = run(options);
  if (result == kRestartWithDemo) {
    options = options.withDemo();
    result = run(options);
  }
  return result;
}
