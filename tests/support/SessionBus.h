#pragma once

#include <QDBusConnection>
#include <QProcess>

/// A private D-Bus session bus for a test, run by a real dbus-daemon.
class SessionBus {
 public:
  SessionBus();
  ~SessionBus();
  SessionBus(const SessionBus &) = delete;
  SessionBus &operator=(const SessionBus &) = delete;

  /// Opens a new connection to the bus, as another process would.
  QDBusConnection connect();
  [[nodiscard]] QString address() const { return m_address; }

 private:
  QProcess m_daemon;
  QString m_address;
  QStringList m_connections;
};
