#include "device/NetworkHttpClient.h"

#include <QIODevice>
#include <QMetaObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

/// A request body that can be read only once. Qt resends a request whose connection closes without
/// an answer, unless the body cannot be rewound. A picking must not be sent twice without the
/// user's knowledge.
class ReadOnceBody : public QIODevice {
 public:
  explicit ReadOnceBody(QByteArray bytes) : m_bytes(std::move(bytes)) {
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
  }
  [[nodiscard]] bool isSequential() const override { return true; }
  bool seek(qint64 /*position*/) override { return false; }
  [[nodiscard]] bool atEnd() const override { return m_position == m_bytes.size(); }
  [[nodiscard]] qint64 bytesAvailable() const override { return m_bytes.size() - m_position; }

 protected:
  qint64 readData(char *data, qint64 maxSize) override {
    const qint64 size = std::min(maxSize, bytesAvailable());
    if (size == 0) {
      return -1;
    }
    std::copy_n(m_bytes.constData() + m_position, size, data);
    m_position += size;
    return size;
  }
  qint64 writeData(const char * /*data*/, qint64 /*maxSize*/) override { return -1; }

 private:
  QByteArray m_bytes;
  qint64 m_position = 0;
};

constexpr int kFirstErrorStatus = 400;

constexpr qint64 kReadBufferBytes = 1024LL * 1024;

class NetworkConnection : public HttpConnection {
 public:
  NetworkConnection(WeakDelegate<HttpConnectionDelegate> delegate, QObject *owner)
      : HttpConnection(owner), m_delegate(std::move(delegate)) {}

  void send(const HttpRequest &request) {
    m_manager.reset(new QNetworkAccessManager);
    QNetworkRequest networkRequest(request.url);
    networkRequest.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                                QNetworkRequest::AlwaysNetwork);
    networkRequest.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    networkRequest.setAttribute(QNetworkRequest::CookieLoadControlAttribute,
                                QNetworkRequest::Manual);
    networkRequest.setAttribute(QNetworkRequest::CookieSaveControlAttribute,
                                QNetworkRequest::Manual);
    networkRequest.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                                QNetworkRequest::ManualRedirectPolicy);
    networkRequest.setTransferTimeout(static_cast<int>(request.timeout.count()));
    for (const auto &[name, value] : request.headers) {
      networkRequest.setRawHeader(name, value);
    }
    if (request.method == "GET") {
      m_reply = m_manager->get(networkRequest);
    } else {
      auto *body = new ReadOnceBody(request.body);
      networkRequest.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
      networkRequest.setHeader(QNetworkRequest::ContentLengthHeader, request.body.size());
      m_reply = m_manager->sendCustomRequest(networkRequest, request.method, body);
      // The reply can outlive this connection and reads the body until it finishes.
      body->setParent(m_reply);
    }
    // Limits the memory for received bytes that have not been passed on yet.
    m_reply->setReadBufferSize(kReadBufferBytes);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, [this] { announceResponse(); });
    connect(m_reply, &QNetworkReply::readyRead, this, [this] { passOnData(); });
    connect(m_reply, &QNetworkReply::finished, this, [this] { finish(); });
  }

  void fail(const QString &description) {
    deleteLater();
    // Must come last: the delegate can delete the owner, and with it this object.
    if (m_delegate) {
      m_delegate->didFailWithError(*this, description);
    }
  }

 private:
  [[nodiscard]] bool hasResponse() const {
    return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
  }

  void announceResponse() {
    if (m_isAnnounced || !hasResponse()) {
      return;
    }
    m_isAnnounced = true;
    const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
    m_announcedBytes = length.isValid() ? length.toLongLong() : -1;
    if (m_delegate) {
      m_delegate->didReceiveResponse(*this);
    }
  }

  void passOnData() {
    announceResponse();
    if (!m_isAnswerWhole || !m_reply->isOpen()) {
      return;
    }
    const QByteArray data = m_reply->readAll();
    m_received += data.size();
    if (m_received > kMaxAnswerBytes) {
      m_isAnswerWhole = false;
      m_reply->abort();
    } else if (!data.isEmpty() && m_delegate) {
      m_delegate->didReceiveData(*this, data);
    }
  }

  /// Returns true if only the end of the connection marks the end of the answer.
  [[nodiscard]] bool endsWithConnection() const {
    return m_announcedBytes < 0 && !m_reply->hasRawHeader("Transfer-Encoding") &&
           !m_reply->hasRawHeader("Content-Encoding");
  }

  /// Returns true after a network error, false after a complete answer with any status.
  [[nodiscard]] bool isBroken() const {
    const QNetworkReply::NetworkError error = m_reply->error();
    // Qt reports this error if it would resend the request but cannot rewind the body.
    if (error == QNetworkReply::ContentReSendError && endsWithConnection()) {
      return false;
    }
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const bool isStatus = status >= kFirstErrorStatus &&
                          (error > QNetworkReply::UnknownProxyError ||
                           error == QNetworkReply::ProxyAuthenticationRequiredError) &&
                          error != QNetworkReply::ProtocolFailure &&
                          error != QNetworkReply::ProtocolUnknownError;
    return error != QNetworkReply::NoError && !isStatus;
  }

  void finish() {
    announceResponse();
    passOnData();
    const QNetworkReply::NetworkError error = m_reply->error();
    const bool timedOut = error == QNetworkReply::OperationCanceledError && m_isAnswerWhole;
    if (!m_isAnnounced || timedOut) {
      fail(timedOut ? QStringLiteral("The request timed out.") : m_reply->errorString());
      return;
    }
    if (isBroken() || m_received < m_announcedBytes) {
      m_isAnswerWhole = false;
    }
    deleteLater();
    if (m_delegate) {
      m_delegate->connectionDidFinishLoading(*this);
    }
  }

  struct DeleteLater {
    void operator()(QObject *object) const { object->deleteLater(); }
  };

  WeakDelegate<HttpConnectionDelegate> m_delegate;
  /// One manager per connection, so that an extra answer from the service cannot be taken for the
  /// answer to the next request.
  std::unique_ptr<QNetworkAccessManager, DeleteLater> m_manager;
  /// A child of the manager.
  QNetworkReply *m_reply = nullptr;
  bool m_isAnnounced = false;
  qint64 m_received = 0;
};

}  // namespace

HttpConnection *NetworkHttpClient::start(const HttpRequest &request,
                                         WeakDelegate<HttpConnectionDelegate> delegate,
                                         QObject *owner) {
  auto *connection = new NetworkConnection(std::move(delegate), owner);
  if (request.url.isValid() && !request.url.isEmpty()) {
    connection->send(request);
  } else {
    QMetaObject::invokeMethod(
        connection, [connection] { connection->fail(QStringLiteral("unsupported URL")); },
        Qt::QueuedConnection);
  }
  return connection;
}
