#pragma once

#include <QByteArray>
#include <QString>
#include <QTcpServer>

#include <limits>

class QTcpSocket;

/// A bad cable between a tablet and its service: every connection goes through it, and may be cut
/// on its way there or back.
class CuttingProxy : public QObject {
  Q_OBJECT

 public:
  static constexpr qsizetype kWhole = std::numeric_limits<qsizetype>::max();

  /// `upstream` is the service's HOST:PORT.
  explicit CuttingProxy(QString upstream);

  /// HOST:PORT.
  [[nodiscard]] QString host() const;

  /// From now on no more than so many bytes get through in each direction. The service has
  /// answered before anything is held back of the answer.
  void cut(qsizetype request, qsizetype answer);
  /// How long the last request and the last answer were, as far as they got.
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
