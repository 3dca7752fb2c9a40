#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QTcpServer>

#include <functional>

class QTcpSocket;

/// A real HTTP service on a free loopback port whose answers a test decides.
class LoopbackService : public QObject {
  Q_OBJECT

 public:
  struct Request {
    QByteArray method;
    /// Path and query, as they came.
    QByteArray target;
    /// Names in lower case.
    QHash<QByteArray, QByteArray> headers;
    QByteArray body;
  };

  /// What goes back over the wire for one request.
  struct Answer {
    QByteArray bytes;
    /// Whether the service closes the connection after the bytes.
    bool closes = true;
    /// Sends more after the bytes, in its own time, and closes the connection itself.
    std::function<void(QTcpSocket &socket)> stream = {};

    /// A whole HTTP answer.
    static Answer http(const QByteArray &body, int status = 200,
                       const QByteArray &contentType = "application/json");
    /// An answer that announces `announced` bytes and sends `body`.
    static Answer cutShort(const QByteArray &body, qsizetype announced);
    /// The connection is closed without a byte.
    static Answer none() { return {}; }
    /// The service says nothing and keeps the connection open.
    static Answer silence() { return {{}, false}; }
  };

  LoopbackService();

  /// HOST:PORT.
  [[nodiscard]] QString host() const;
  /// A HOST:PORT at which nothing listens.
  [[nodiscard]] static QString unreachableHost();

  /// Answers every request with what `answer` makes of it.
  void answerWith(std::function<Answer(const Request &)> answer) { m_answer = std::move(answer); }
  /// Answers every request with an HTTP answer of `body`.
  void answerWith(const QByteArray &body, int status = 200);

  /// Every request so far.
  [[nodiscard]] const QList<Request> &requests() const { return m_requests; }

  /// The number of connections that wait for an answer.
  [[nodiscard]] qsizetype silentConnections() const { return m_silent.size(); }
  /// Ends every connection without an answer.
  void dropConnections();
  /// Sends `answer` to the oldest of the connections that were left in silence. That one goes on
  /// waiting if the answer does not close it.
  void answerSilentConnection(const Answer &answer);

 private:
  void readFrom(QTcpSocket *socket);
  static void send(QTcpSocket *socket, const Answer &answer);

  QHash<QTcpSocket *, QByteArray> m_received;
  QList<QTcpSocket *> m_silent;
  QList<Request> m_requests;
  std::function<Answer(const Request &)> m_answer;
  /// The last member: its sockets, which go with it, use the others until then.
  QTcpServer m_server;
};
