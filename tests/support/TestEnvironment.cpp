#include "support/TestEnvironment.h"

#include "app/MainStoryboard.h"
#include "device/NetworkHttpClient.h"

TestEnvironment::TestEnvironment(const PickingRules &rules) {
  auto ownedClock = std::make_unique<TestClock>();
  auto ownedSounds = std::make_unique<TestSoundPlayer>();
  auto ownedMail = std::make_unique<TestMailComposer>();
  auto ownedWakeLock = std::make_unique<TestWakeLock>();
  clock = ownedClock.get();
  wakeLock = ownedWakeLock.get();
  sounds = ownedSounds.get();
  mail = ownedMail.get();
  environment.clock = std::move(ownedClock);
  environment.sounds = std::move(ownedSounds);
  environment.mail = std::move(ownedMail);
  environment.http = std::make_unique<NetworkHttpClient>();
  environment.wakeLock = std::move(ownedWakeLock);
  environment.rules = rules;
  environment.folders = {m_home.path()};
  if (!environment.folders.create()) {
    qFatal("The temporary folder %s cannot be used.", qUtf8Printable(m_home.path()));
  }
  environment.display = std::make_unique<DisplaySettings>(
      environment.folders, std::make_unique<SystemColourScheme>(QDBusConnection(QString())));
  fillMainStoryboard(environment.storyboard);
}

AlertView TestEnvironment::topAlert() const {
  const std::vector<AlertView> &alerts = environment.alerts.alerts();
  return alerts.empty() ? AlertView() : alerts.back();
}

QStringList TestEnvironment::alertTitles() const {
  QStringList titles;
  for (const AlertView &alert : environment.alerts.alerts()) {
    titles.append(alert.title);
  }
  return titles;
}

void TestEnvironment::answerTopAlert(int index) {
  environment.alerts.answer(environment.alerts.count() - 1, index);
}
