#pragma once

#include "platform/HttpClient.h"

#include <QNetworkAccessManager>

/// The HTTP client of the device's network.
class NetworkHttpClient : public HttpClient {
 public:
  HttpConnection *start(const HttpRequest &request, WeakDelegate<HttpConnectionDelegate> delegate,
                        QObject *owner) override;

 private:
  QNetworkAccessManager m_manager;
};
