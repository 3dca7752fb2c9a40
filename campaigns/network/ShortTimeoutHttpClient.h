#pragma once

#include "device/NetworkHttpClient.h"

#include <QList>
#include <QPointer>

#include <chrono>
#include <optional>

/// The real client, whose time-out can be shortened.
class ShortTimeoutHttpClient : public HttpClient {
 public:
  HttpConnection *start(const HttpRequest &request, WeakDelegate<HttpConnectionDelegate> delegate,
                        QObject *owner) override;

  /// Sets the time-out of later requests. std::nullopt, the default, keeps each request's own.
  void setTimeout(std::optional<std::chrono::milliseconds> timeout) { m_timeout = timeout; }
  /// Returns the time-out that the last request asked for.
  [[nodiscard]] std::chrono::milliseconds askedTimeout() const { return m_askedTimeout; }
  /// Returns true while a connection exists.
  [[nodiscard]] bool isBusy() const;

 private:
  NetworkHttpClient m_client;
  std::optional<std::chrono::milliseconds> m_timeout;
  std::chrono::milliseconds m_askedTimeout{};
  QList<QPointer<HttpConnection>> m_connections;
};
