#include "device/SystemColourScheme.h"

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
// Any other value means no preference.
constexpr uint kPrefersDark = 1;
constexpr uint kPrefersLight = 2;

bool isPaletteDark() {
  if (qobject_cast<QGuiApplication *>(QCoreApplication::instance()) == nullptr) {
    return false;
  }
  const QPalette palette = QGuiApplication::palette();
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

/// Removes nested D-Bus variants: the reply to Read is a variant in a variant.
QVariant unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) {
    value = value.value<QDBusVariant>().variant();
  }
  return value;
}

}  // namespace

SystemColourScheme::SystemColourScheme(QDBusConnection bus) : m_isDark(isPaletteDark()) {
  if (bus.isConnected()) {
    bus.connect(kPortal, kPath, kSettings, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(bus);
  }
  if (QCoreApplication *application = QCoreApplication::instance()) {
    application->installEventFilter(this);
  }
}

bool SystemColourScheme::eventFilter(QObject * /*watched*/, QEvent *event) {
  if (event->type() == QEvent::ApplicationPaletteChange) {
    update();
  }
  return false;
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
    const uint preference = unwrapped(value.variant()).toUInt();
    const bool isKnown = preference == kPrefersDark || preference == kPrefersLight;
    m_preference = isKnown ? std::optional(preference == kPrefersDark) : std::nullopt;
    update();
  }
}

void SystemColourScheme::update() {
  const bool isDark = m_preference.value_or(isPaletteDark());
  if (m_isDark != isDark) {
    m_isDark = isDark;
    emit changed();
  }
}
