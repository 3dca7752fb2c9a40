#include "network/HurriedHttpClient.h"

#include <algorithm>
#include <utility>

HttpConnection *HurriedHttpClient::start(const HttpRequest &request,
                                         WeakDelegate<HttpConnectionDelegate> delegate,
                                         QObject *owner) {
  m_askedTimeout = request.timeout;
  HttpRequest hurried = request;
  hurried.timeout = m_timeout.value_or(request.timeout);
  m_connections.removeAll(nullptr);
  return m_connections.emplace_back(m_client.start(hurried, std::move(delegate), owner));
}

bool HurriedHttpClient::isBusy() const {
  return std::any_of(m_connections.begin(), m_connections.end(),
                     [](const auto &connection) { return !connection.isNull(); });
}
