#pragma once

#include "device/WakeLock.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <optional>

/// Keeps the screen on through the desktop's idle inhibition (org.freedesktop.ScreenSaver on the
/// session bus). Without such a desktop it does nothing; one that comes up later is asked then. The
/// desktop ends an inhibition by itself when the program ends.
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
