#pragma once

#include "device/HttpClient.h"

/// An HTTP client on the device's network. Every request opens a separate connection.
class NetworkHttpClient : public HttpClient {
 public:
  HttpConnection *start(const HttpRequest &request, WeakDelegate<HttpConnectionDelegate> delegate,
                        QObject *owner) override;
};
