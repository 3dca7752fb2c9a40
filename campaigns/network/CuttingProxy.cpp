#include "network/CuttingProxy.h"

#include <QTcpSocket>

#include <algorithm>
#include <utility>

namespace {

/// Returns true if `bytes` are a complete answer. The service keeps the connection open after it.
bool isWholeAnswer(const QByteArray &bytes) {
  const qsizetype head = bytes.indexOf("\r\n\r\n");
  const QByteArray field = "content-length: ";
  const qsizetype length = bytes.first(std::max<qsizetype>(head, 0)).toLower().indexOf(field);
  if (head < 0 || length < 0) {
    return false;
  }
  const qsizetype value = length + field.size();
  const qsizetype body = bytes.mid(value, bytes.indexOf('\r', value) - value).toLongLong();
  return bytes.size() >= head + 4 + body;
}

}  // namespace

CuttingProxy::CuttingProxy(QString upstream) : m_upstream(std::move(upstream)) {
  connect(&m_server, &QTcpServer::newConnection, this, [this] {
    while (QTcpSocket *tablet = m_server.nextPendingConnection()) {
      connectThrough(tablet);
    }
  });
  m_server.listen(QHostAddress::LocalHost);
}

QString CuttingProxy::host() const {
  return QStringLiteral("127.0.0.1:%1").arg(m_server.serverPort());
}

void CuttingProxy::cut(qsizetype request, qsizetype answer) {
  m_requestLimit = request;
  m_answerLimit = answer;
}

void CuttingProxy::connectThrough(QTcpSocket *tablet) {
  m_requestSize = 0;
  m_answerSize = 0;
  auto *service = new QTcpSocket(tablet);
  connect(tablet, &QTcpSocket::disconnected, tablet, &QObject::deleteLater);
  connect(tablet, &QTcpSocket::readyRead, service, [this, tablet, service] {
    const QByteArray bytes = tablet->readAll();
    service->write(bytes.first(std::min(bytes.size(), m_requestLimit - m_requestSize)));
    m_requestSize += bytes.size();
    if (m_requestSize > m_requestLimit) {
      // Closes the connection after the permitted bytes have been sent.
      service->disconnectFromHost();
    }
  });
  connect(service, &QTcpSocket::readyRead, tablet, [service] {
    if (isWholeAnswer(service->peek(service->bytesAvailable()))) {
      service->disconnectFromHost();
    }
  });
  connect(service, &QTcpSocket::disconnected, tablet, [this, tablet, service] {
    const QByteArray answer = service->readAll();
    m_answerSize = answer.size();
    tablet->write(answer.first(std::min(answer.size(), m_answerLimit)));
    tablet->disconnectFromHost();
  });
  service->connectToHost(m_upstream.section(u':', 0, 0), m_upstream.section(u':', 1).toUShort());
}
