#pragma once

#include "device/NetworkHttpClient.h"

#include <QList>
#include <QPointer>

#include <chrono>
#include <optional>

/// The real client, with a timeout that can be overridden.
class ShortTimeoutHttpClient : public HttpClient {
 public:
  HttpConnection *start(const HttpRequest &request, WeakDelegate<HttpConnectionDelegate> delegate,
                        QObject *owner) override;

  /// Sets the timeout of later requests. std::nullopt, the default, keeps each request's timeout.
  void setTimeout(std::optional<std::chrono::milliseconds> timeout) { m_timeout = timeout; }
  /// Returns the timeout specified in the last request.
  [[nodiscard]] std::chrono::milliseconds askedTimeout() const { return m_askedTimeout; }
  /// Returns true while a connection exists.
  [[nodiscard]] bool isBusy() const;

 private:
  NetworkHttpClient m_client;
  std::optional<std::chrono::milliseconds> m_timeout;
  std::chrono::milliseconds m_askedTimeout{};
  QList<QPointer<HttpConnection>> m_connections;
};
