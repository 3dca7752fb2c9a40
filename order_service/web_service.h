#pragma once

#include "error_log.h"
#include "http/http_message.h"
#include "http/http_server.h"
#include "http/kept_answer.h"
#include "http/metrics.h"
#include "http/request_log.h"
#include "pages/access_guard.h"
#include "pages/supervisor_pages.h"
#include "store/sql_store.h"
#include "tablet_api/order_service.h"

#include <optional>

namespace cartonpick::orders {

/// Everything that the program answers: the tablets' calls, which are open to all; `/livez`,
/// `/readyz` and `/healthz` for a proxy, which are, too; and what the guard keeps, `/metrics` for
/// Prometheus and the supervisor's pages. May be called from several threads at once.
class WebService {
 public:
  /// The store and the logs must outlive the service; without a log nothing is written to it.
  WebService(SqlStore &store, AccessGuard guard, RequestLog *log, ErrorLog *errors = nullptr);

  Answer answer(const Request &request);

  /// Returns which threads are to answer the request.
  static RequestPool poolOf(const Request &request);

  /// Logs a request that the HTTP server has refused.
  void logRefusal(const Request &request, const Answer &answer);

  Metrics &metrics() { return m_metrics; }

 private:
  Answer route(const Request &request) const;
  Answer checkStore() const;
  Answer failure(int status, const std::string &outward, const std::exception &error) const;

  SqlStore &m_store;
  OrderService m_calls;
  SupervisorPages m_pages;
  AccessGuard m_guard;
  RequestLog *m_log;
  ErrorLog *m_errors;
  mutable KeptAnswer m_readiness;
  Metrics m_metrics;
};

}  // namespace cartonpick::orders
