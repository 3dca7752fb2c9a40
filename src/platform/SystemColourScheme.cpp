#include "platform/SystemColourScheme.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QPalette>

namespace {

const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString kGroup = QStringLiteral("org.freedesktop.appearance");
const QString kKey = QStringLiteral("color-scheme");
/// 0 stands for no preference, 2 for light.
constexpr uint kPrefersDark = 1;

bool isPaletteDark() {
  if (qobject_cast<QGuiApplication *>(QCoreApplication::instance()) == nullptr) {
    return false;
  }
  const QPalette palette = QGuiApplication::palette();
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

/// The answer to Read is a variant in a variant.
QVariant unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) {
    value = value.value<QDBusVariant>().variant();
  }
  return value;
}

}  // namespace

SystemColourScheme::SystemColourScheme(QDBusConnection bus, QObject *parent)
    : QObject(parent), m_isDark(isPaletteDark()) {
  if (bus.isConnected()) {
    bus.connect(kPortal, kPath, kSettings, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(bus);
  }
}

void SystemColourScheme::ask(QDBusConnection &bus) {
  QDBusMessage read =
      QDBusMessage::createMethodCall(kPortal, kPath, kSettings, QStringLiteral("Read"));
  read << kGroup << kKey;
  auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    answer->deleteLater();
    const QDBusPendingReply<QDBusVariant> value = *answer;
    if (value.isValid()) {
      settingChanged(kGroup, kKey, value.value());
    }
  });
}

void SystemColourScheme::settingChanged(const QString &group, const QString &key,
                                        const QDBusVariant &value) {
  if (group == kGroup && key == kKey) {
    setDark(unwrapped(value.variant()).toUInt() == kPrefersDark);
  }
}

void SystemColourScheme::setDark(bool isDark) {
  if (m_isDark != isDark) {
    m_isDark = isDark;
    emit changed();
  }
}
