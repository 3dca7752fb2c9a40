#pragma once

#include "device/HttpClient.h"

/// The HTTP client of the device's network. Every request has a connection of its own.
class NetworkHttpClient : public HttpClient {
 public:
  HttpConnection *start(const HttpRequest &request, WeakDelegate<HttpConnectionDelegate> delegate,
                        QObject *owner) override;
};
