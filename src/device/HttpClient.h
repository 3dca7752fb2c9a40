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
  /// An empty or invalid URL makes the connection fail.
  QUrl url;
  QByteArray method = "GET";
  QList<std::pair<QByteArray, QByteArray>> headers = {};
  QByteArray body = {};
  /// The connection fails after this time without progress.
  std::chrono::milliseconds timeout = std::chrono::seconds(60);
};

/// Receives the events of one connection: at most one response, then its data, then exactly one of
/// `connectionDidFinishLoading` and `didFailWithError`.
class HttpConnectionDelegate {
 public:
  virtual ~HttpConnectionDelegate() = default;
  virtual void didReceiveResponse(HttpConnection &connection) = 0;
  virtual void didReceiveData(HttpConnection &connection, const QByteArray &data) = 0;
  virtual void connectionDidFinishLoading(HttpConnection &connection) = 0;
  /// `description` is a message for the user.
  virtual void didFailWithError(HttpConnection &connection, const QString &description) = 0;
};

/// One HTTP request and its answer. The delegate is called from the event loop of the thread that
/// started the request, never before `HttpClient::start` has returned.
class HttpConnection : public QObject {
  Q_OBJECT

 public:
  /// The maximum size of an answer. A larger one is aborted and counts as incomplete.
  static constexpr qint64 kMaxAnswerBytes = 256LL * 1024 * 1024;

  using QObject::QObject;

  /// Returns false if the answer is shorter than announced, too large, or was cut off.
  [[nodiscard]] bool isAnswerWhole() const { return m_isAnswerWhole; }
  /// The Content-Length of the answer in bytes; -1 if there is none.
  [[nodiscard]] qint64 announcedBytes() const { return m_announcedBytes; }

 protected:
  bool m_isAnswerWhole = true;
  qint64 m_announcedBytes = -1;
};

/// Sends HTTP requests without caching, cookies or redirects.
class HttpClient {
 public:
  virtual ~HttpClient() = default;
  /// Starts `request`. The connection is a child of `owner` and deletes itself after it has ended.
  virtual HttpConnection *start(const HttpRequest &request,
                                WeakDelegate<HttpConnectionDelegate> delegate, QObject *owner) = 0;
};
