#include "device/DesktopWakeLock.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace {

const QString kScreenSaver = QStringLiteral("org.freedesktop.ScreenSaver");

QDBusMessage screenSaverCall(const QString &method) {
  return QDBusMessage::createMethodCall(
      kScreenSaver, QStringLiteral("/org/freedesktop/ScreenSaver"), kScreenSaver, method);
}

}  // namespace

DesktopWakeLock::DesktopWakeLock(QDBusConnection bus)
    : m_bus(std::move(bus)),
      m_desktop(kScreenSaver, m_bus, QDBusServiceWatcher::WatchForRegistration) {
  connect(&m_desktop, &QDBusServiceWatcher::serviceRegistered, this, [this] {
    // A cookie becomes invalid when the desktop service restarts.
    m_cookie.reset();
    if (m_isWanted) {
      ask();
    }
  });
}

void DesktopWakeLock::acquire() {
  m_isWanted = true;
  ask();
}

void DesktopWakeLock::ask() {
  if (m_cookie || m_isAsked || !m_bus.isConnected()) {
    return;
  }
  m_isAsked = true;
  QDBusMessage inhibit = screenSaverCall(QStringLiteral("Inhibit"));
  inhibit << QStringLiteral("CartonPick") << QStringLiteral("A picking is in progress");
  auto *answer = new QDBusPendingCallWatcher(m_bus.asyncCall(inhibit), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    answer->deleteLater();
    m_isAsked = false;
    const QDBusPendingReply<uint> cookie = *answer;
    if (cookie.isValid()) {
      granted(cookie.value());
    }
  });
}

void DesktopWakeLock::granted(uint cookie) {
  m_cookie = cookie;
  // The lock may have been released before the desktop replied.
  if (!m_isWanted) {
    release();
  }
}

void DesktopWakeLock::release() {
  m_isWanted = false;
  if (const auto cookie = std::exchange(m_cookie, std::nullopt)) {
    QDBusMessage uninhibit = screenSaverCall(QStringLiteral("UnInhibit"));
    uninhibit << *cookie;
    m_bus.send(uninhibit);
  }
}
