#pragma once

#include "device/NetworkHttpClient.h"

#include <QList>
#include <QPointer>

#include <chrono>
#include <optional>

/// The real client, which may be told to lose its patience sooner.
class ShortTimeoutHttpClient : public HttpClient {
 public:
  HttpConnection *start(const HttpRequest &request, WeakDelegate<HttpConnectionDelegate> delegate,
                        QObject *owner) override;

  /// From now on requests time out after `timeout` instead of what they ask for, if there is one.
  void setTimeout(std::optional<std::chrono::milliseconds> timeout) { m_timeout = timeout; }
  /// What the last request asked for.
  [[nodiscard]] std::chrono::milliseconds askedTimeout() const { return m_askedTimeout; }
  /// Whether a connection was started that is still there.
  [[nodiscard]] bool isBusy() const;

 private:
  NetworkHttpClient m_client;
  std::optional<std::chrono::milliseconds> m_timeout;
  std::chrono::milliseconds m_askedTimeout{};
  QList<QPointer<HttpConnection>> m_connections;
};
