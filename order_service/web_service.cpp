#include "web_service.h"

#include <chrono>
#include <exception>
#include <string_view>
#include <utility>

namespace cartonpick::orders {

namespace {

std::string_view pathOf(const Request &request) {
  return std::string_view(request.target).substr(0, request.target.find('?'));
}

bool isRead(const Request &request) {
  return request.method == "GET" || request.method == "HEAD";
}

/// What the request counts as.
std::string kindOf(const Request &request) {
  const std::string_view path = pathOf(request);
  if (path.starts_with(OrderService::kPrefix)) {
    const std::string_view call = path.substr(OrderService::kPrefix.size());
    return call == "sendpick" ? "send" : call == "getitems" ? "catalogue" : "lookup";
  }
  return path == "/healthz" ? "health" : path == "/metrics" ? "metrics" : "page";
}

/// What a browser is told of every page, besides what stands in it.
void protectPage(Answer &answer) {
  if (answer.contentType.starts_with("text/html")) {
    answer.headers.insert(answer.headers.end(),
                          {{"Content-Security-Policy", "frame-ancestors 'none'"},
                           {"X-Content-Type-Options", "nosniff"},
                           {"Cache-Control", "no-store"}});
  }
}

}  // namespace

WebService::WebService(SqlStore &store, AccessGuard guard, RequestLog *log)
    : m_store(store), m_calls(store), m_pages(store), m_guard(std::move(guard)), m_log(log) {}

Answer WebService::answer(const Request &request) {
  const auto begin = std::chrono::steady_clock::now();
  Answer answer;
  try {
    answer = route(request);
  } catch (const std::exception &error) {
    answer = textAnswer(500, error.what());
  }
  protectPage(answer);
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
  m_metrics.count(kindOf(request), answer.status, time);
  if (m_log != nullptr) {
    m_log->write(request, answer, time);
  }
  return answer;
}

Answer WebService::route(const Request &request) const {
  const std::string_view path = pathOf(request);
  if (path == "/healthz") {
    return health();
  }
  if (path.starts_with(OrderService::kPrefix)) {
    return m_calls.answer(request);
  }
  if (auto refusal = m_guard.refusal(request)) {
    return *refusal;
  }
  if (path == "/metrics" && isRead(request)) {
    return {.contentType = "text/plain; version=0.0.4; charset=utf-8", .body = m_metrics.text()};
  }
  const auto page = m_pages.answer(request);
  return page ? *page : m_calls.answer(request);
}

Answer WebService::health() const {
  try {
    static_cast<void>(m_store.delivery(""));
    return textAnswer(200, "ok\n");
  } catch (const std::exception &error) {
    return textAnswer(503, error.what());
  }
}

}  // namespace cartonpick::orders
