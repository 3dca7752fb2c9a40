#include "support/LoopbackService.h"

#include <QTcpSocket>

#include <optional>
#include <utility>

namespace {

/// Returns the request in `bytes`, or std::nullopt while it is incomplete.
std::optional<LoopbackService::Request> parseRequest(const QByteArray &bytes) {
  const qsizetype headEnd = bytes.indexOf("\r\n\r\n");
  if (headEnd < 0) {
    return std::nullopt;
  }
  QList<QByteArray> lines = bytes.first(headEnd).split('\n');
  const QList<QByteArray> words = lines.takeFirst().trimmed().split(' ');
  LoopbackService::Request request{words.value(0), words.value(1), {}, bytes.sliced(headEnd + 4)};
  for (const QByteArray &line : std::as_const(lines)) {
    const qsizetype colon = line.indexOf(':');
    request.headers.insert(line.first(colon).trimmed().toLower(), line.sliced(colon + 1).trimmed());
  }
  const qsizetype announced = request.headers.value("content-length", "0").toLongLong();
  return request.body.size() < announced ? std::nullopt : std::optional(request);
}

}  // namespace

LoopbackService::Answer LoopbackService::Answer::http(const QByteArray &body, int status,
                                                      const QByteArray &contentType) {
  return {"HTTP/1.1 " + QByteArray::number(status) + " Status\r\nContent-Type: " + contentType +
              "\r\nContent-Length: " + QByteArray::number(body.size()) +
              "\r\nConnection: close\r\n\r\n" + body,
          true};
}

LoopbackService::Answer LoopbackService::Answer::cutShort(const QByteArray &body,
                                                          qsizetype announced) {
  return {"HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " +
              QByteArray::number(announced) + "\r\nConnection: close\r\n\r\n" + body,
          true};
}

LoopbackService::LoopbackService() {
  answerWith("[]");
  connect(&m_server, &QTcpServer::newConnection, this, [this] {
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
      connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readFrom(socket); });
      connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
        m_silent.removeAll(socket);
        m_received.remove(socket);
        socket->deleteLater();
      });
    }
  });
  m_server.listen(QHostAddress::LocalHost);
}

QString LoopbackService::host() const {
  return QStringLiteral("127.0.0.1:%1").arg(m_server.serverPort());
}

QString LoopbackService::unreachableHost() {
  QTcpServer server;
  server.listen(QHostAddress::LocalHost);
  return QStringLiteral("127.0.0.1:%1").arg(server.serverPort());
}

void LoopbackService::answerWith(const QByteArray &body, int status) {
  m_answer = [body, status](const Request &) { return Answer::http(body, status); };
}

void LoopbackService::readFrom(QTcpSocket *socket) {
  QByteArray &received = m_received[socket];
  received += socket->readAll();
  const auto request = parseRequest(received);
  if (!request) {
    return;
  }
  received.clear();
  m_requests.append(*request);
  const Answer answer = m_answer(*request);
  if (answer.bytes.isEmpty() && !answer.closes) {
    m_silent.append(socket);
  } else {
    send(socket, answer);
  }
}

void LoopbackService::send(QTcpSocket *socket, const Answer &answer) {
  socket->write(answer.bytes);
  if (answer.stream) {
    answer.stream(*socket);
  } else if (answer.closes) {
    socket->disconnectFromHost();
  }
}

void LoopbackService::dropConnections() {
  const QList<QTcpSocket *> silent = std::exchange(m_silent, {});
  for (QTcpSocket *socket : silent) {
    socket->abort();
  }
}

void LoopbackService::answerSilentConnection(const Answer &answer) {
  send(answer.closes ? m_silent.takeFirst() : m_silent.first(), answer);
}
