#include "support/SessionBus.h"

#include <QtGlobal>

SessionBus::SessionBus() {
  m_daemon.start(
      QStringLiteral("dbus-daemon"),
      {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
  while (!m_daemon.canReadLine()) {
    if (!m_daemon.waitForReadyRead()) {
      qFatal("The bus does not start: %s", qUtf8Printable(m_daemon.errorString()));
    }
  }
  m_address = QString::fromLatin1(m_daemon.readLine().trimmed());
}

SessionBus::~SessionBus() {
  for (const QString &name : std::as_const(m_connections)) {
    QDBusConnection::disconnectFromBus(name);
  }
  m_daemon.terminate();
  m_daemon.waitForFinished();
}

QDBusConnection SessionBus::connect() {
  m_connections.append(QStringLiteral("%1-%2").arg(m_address).arg(m_connections.size()));
  return QDBusConnection::connectToBus(m_address, m_connections.back());
}
