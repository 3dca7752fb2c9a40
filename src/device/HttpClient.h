#pragma once

#include "base/WeakDelegate.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QUrl>

#include <chrono>
#include <utility>

class HttpConnection;

struct HttpRequest {
  /// An empty address cannot be reached: the connection fails.
  QUrl url;
  QByteArray method = "GET";
  QList<std::pair<QByteArray, QByteArray>> headers = {};
  QByteArray body = {};
  /// How long nothing may arrive before the connection fails.
  std::chrono::milliseconds timeout = std::chrono::seconds(60);
};

/// Follows one connection. After a response and its data exactly one of the last two is called.
class HttpConnectionDelegate {
 public:
  virtual ~HttpConnectionDelegate() = default;
  virtual void didReceiveResponse(HttpConnection &connection) = 0;
  virtual void didReceiveData(HttpConnection &connection, const QByteArray &data) = 0;
  virtual void connectionDidFinishLoading(HttpConnection &connection) = 0;
  /// `description` says in words what went wrong.
  virtual void didFailWithError(HttpConnection &connection, const QString &description) = 0;
};

/// One request and its answer. All calls arrive in the event loop of the thread that started it,
/// none of them before the call that started it has returned.
class HttpConnection : public QObject {
  Q_OBJECT

 public:
  /// An answer beyond this many bytes is cut off and counts as damaged.
  static constexpr qint64 kMaxAnswerBytes = 256LL * 1024 * 1024;

  using QObject::QObject;

  /// Whether the whole answer arrived, as long as it was announced and no longer than allowed.
  [[nodiscard]] bool isAnswerWhole() const { return m_isAnswerWhole; }
  /// The number of bytes that the service announced; -1 if it announced none.
  [[nodiscard]] qint64 announcedBytes() const { return m_announcedBytes; }

 protected:
  bool m_isAnswerWhole = true;
  qint64 m_announcedBytes = -1;
};

/// Sends HTTP requests: from no cache, following no redirect.
class HttpClient {
 public:
  virtual ~HttpClient() = default;
  /// Starts `request`. The connection belongs to `owner` and is deleted some time after it ended.
  virtual HttpConnection *start(const HttpRequest &request,
                                WeakDelegate<HttpConnectionDelegate> delegate, QObject *owner) = 0;
};
