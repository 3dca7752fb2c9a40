#pragma once

#include "device/WakeLock.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <optional>

/// Keeps the screen on through the desktop's idle inhibition (org.freedesktop.ScreenSaver on the
/// session bus). Does nothing without this service; if the service starts while the lock is held,
/// the inhibition is requested then. The desktop ends the inhibition when the program ends.
class DesktopWakeLock : public QObject, public WakeLock {
  Q_OBJECT

 public:
  explicit DesktopWakeLock(QDBusConnection bus = QDBusConnection::sessionBus());

  void acquire() override;
  void release() override;

 private:
  void ask();
  void granted(uint cookie);

  QDBusConnection m_bus;
  QDBusServiceWatcher m_desktop;
  bool m_isWanted = false;
  bool m_isAsked = false;
  std::optional<uint> m_cookie;
};
