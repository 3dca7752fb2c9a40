#include "network/ShortTimeoutHttpClient.h"

#include <algorithm>
#include <utility>

HttpConnection *ShortTimeoutHttpClient::start(const HttpRequest &request,
                                              WeakDelegate<HttpConnectionDelegate> delegate,
                                              QObject *owner) {
  m_askedTimeout = request.timeout;
  HttpRequest shortened = request;
  shortened.timeout = m_timeout.value_or(request.timeout);
  m_connections.removeAll(nullptr);
  return m_connections.emplace_back(m_client.start(shortened, std::move(delegate), owner));
}

bool ShortTimeoutHttpClient::isBusy() const {
  return std::any_of(m_connections.begin(), m_connections.end(),
                     [](const auto &connection) { return !connection.isNull(); });
}
