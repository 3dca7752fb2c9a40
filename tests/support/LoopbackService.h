#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QTcpServer>

#include <functional>

class QTcpSocket;

/// An HTTP service on a free loopback port. Tests set its answers.
class LoopbackService : public QObject {
  Q_OBJECT

 public:
  struct Request {
    QByteArray method;
    /// Path and query, as received.
    QByteArray target;
    /// Names in lower case.
    QHash<QByteArray, QByteArray> headers;
    QByteArray body;
  };

  /// The answer to one request, as bytes.
  struct Answer {
    QByteArray bytes;
    /// True if the service closes the connection after the bytes.
    bool closes = true;
    /// Sends more data after the bytes, possibly later, and closes the connection itself.
    std::function<void(QTcpSocket &socket)> stream = {};

    /// A complete HTTP answer.
    static Answer http(const QByteArray &body, int status = 200,
                       const QByteArray &contentType = "application/json");
    /// An answer that announces the content length `announced` but ends after `body`.
    static Answer cutShort(const QByteArray &body, qsizetype announced);
    /// Closes the connection without sending anything.
    static Answer none() { return {}; }
    /// Sends nothing and keeps the connection open.
    static Answer silence() { return {{}, false}; }
  };

  LoopbackService();

  /// The HOST:PORT that the service listens on.
  [[nodiscard]] QString host() const;
  /// Returns a HOST:PORT that no service listens on.
  [[nodiscard]] static QString unreachableHost();

  /// Answers every request with the result of `answer`.
  void answerWith(std::function<Answer(const Request &)> answer) { m_answer = std::move(answer); }
  /// Answers every request with an HTTP answer that has the body `body`.
  void answerWith(const QByteArray &body, int status = 200);

  /// All requests received so far.
  [[nodiscard]] const QList<Request> &requests() const { return m_requests; }

  /// The number of connections that were answered with `silence`.
  [[nodiscard]] qsizetype silentConnections() const { return m_silent.size(); }
  /// Aborts all silent connections.
  void dropConnections();
  /// Sends `answer` to the oldest silent connection. The connection stays silent if the answer does
  /// not close it.
  void answerSilentConnection(const Answer &answer);

 private:
  void readFrom(QTcpSocket *socket);
  static void send(QTcpSocket *socket, const Answer &answer);

  QHash<QTcpSocket *, QByteArray> m_received;
  QList<QTcpSocket *> m_silent;
  QList<Request> m_requests;
  std::function<Answer(const Request &)> m_answer;
  /// Declared last and so destroyed first: its sockets use the other members.
  QTcpServer m_server;
};
