#pragma once

#include <QDBusConnection>
#include <QProcess>

/// A D-Bus session of a test's own: a real bus, which nobody else is on.
class SessionBus {
 public:
  SessionBus();
  ~SessionBus();
  SessionBus(const SessionBus &) = delete;
  SessionBus &operator=(const SessionBus &) = delete;

  /// A new connection to the bus, as of a process of its own.
  QDBusConnection connect();

 private:
  QProcess m_daemon;
  QString m_address;
  QStringList m_connections;
};
