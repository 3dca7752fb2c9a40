#pragma once

#include <QByteArray>
#include <QString>
#include <QTcpServer>

#include <limits>

class QTcpSocket;

/// A proxy between a tablet and its service that can cut connections in both directions.
class CuttingProxy : public QObject {
  Q_OBJECT

 public:
  static constexpr qsizetype kWhole = std::numeric_limits<qsizetype>::max();

  /// Listens on a free loopback port. `upstream` is the service's HOST:PORT.
  explicit CuttingProxy(QString upstream);

  /// The HOST:PORT that the proxy listens on.
  [[nodiscard]] QString host() const;

  /// Sets how many bytes of the request and of the answer are passed on in later connections. The
  /// proxy reads the whole answer before it cuts it.
  void cut(qsizetype request, qsizetype answer);
  /// The number of bytes received of the last request and of the last answer.
  [[nodiscard]] qsizetype requestSize() const { return m_requestSize; }
  [[nodiscard]] qsizetype answerSize() const { return m_answerSize; }

 private:
  void connectThrough(QTcpSocket *tablet);

  QString m_upstream;
  qsizetype m_requestLimit = kWhole;
  qsizetype m_answerLimit = kWhole;
  qsizetype m_requestSize = 0;
  qsizetype m_answerSize = 0;
  QTcpServer m_server;
};
