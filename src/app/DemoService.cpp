#include "app/DemoService.h"

#include <QCoreApplication>
#include <QDebug>

#include <utility>

DemoService::DemoService(QString program) : m_program(std::move(program)) {}

QString DemoService::besideThisProgram() {
  return QCoreApplication::applicationDirPath() + QStringLiteral("/cartonpick-orders");
}

QString DemoService::start() {
  m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  m_process.start(m_program, {QStringLiteral("--port"), QStringLiteral("0"),
                              QStringLiteral("--exit-with-parent")});
  while (!m_process.canReadLine()) {
    if (!m_process.waitForReadyRead()) {
      qWarning("The demo order service %s did not start: %s", qUtf8Printable(m_program),
               qUtf8Printable(m_process.errorString()));
      return {};
    }
  }
  return QStringLiteral("127.0.0.1:") + QString::fromLatin1(m_process.readLine().trimmed());
}

DemoService::~DemoService() {
  if (m_process.state() != QProcess::NotRunning) {
    m_process.terminate();
    m_process.waitForFinished();
  }
}
