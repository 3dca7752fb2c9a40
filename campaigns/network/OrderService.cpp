#include "network/OrderService.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <utility>

OrderService::OrderService(QString program) : m_program(std::move(program)) {
  m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  m_process.start(m_program, {"--port", "0", "--demo", "--store", store(), "--exit-with-parent"});
  while (!m_process.canReadLine()) {
    if (!m_process.waitForReadyRead()) {
      qFatal("The order service does not start.");
    }
  }
  m_host = "127.0.0.1:" + QString::fromLatin1(m_process.readLine().trimmed());
}

OrderService::~OrderService() {
  m_process.terminate();
  m_process.waitForFinished();
}

qsizetype OrderService::storedLines() const {
  QProcess dump;
  dump.start(m_program, {"export", "--store", store(), "--all", "--format", "json"});
  if (!dump.waitForFinished() || dump.exitCode() != 0) {
    qFatal("The stored lines cannot be read.");
  }
  return QJsonDocument::fromJson(dump.readAllStandardOutput()).array().size();
}
