#include "web_service.h"

#include "pages/html_page.h"

#include <chrono>
#include <exception>
#include <string_view>
#include <utility>

namespace cartonpick::orders {

namespace {

/// The kind of a request that is a browser's.
constexpr auto kPage = "page";

constexpr std::string_view kLiveness = "/livez";
constexpr std::string_view kMetrics = "/metrics";

/// Returns whether the path asks for the state of the store.
bool isProbe(std::string_view path) {
  return path == "/readyz" || path == "/healthz";
}

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
  return isProbe(path) || path == kLiveness ? "health" : path == kMetrics ? "metrics" : kPage;
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
  const std::string kind = kindOf(request);
  Answer answer;
  bool hasFailed = false;
  try {
    answer = route(request);
  } catch (const std::exception &error) {
    answer = textAnswer(500, error.what());
    hasFailed = true;
  }
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
  m_metrics.count(kind, answer.status, time);
  if (m_log != nullptr) {
    m_log->write(request, answer, time);
  }
  if (hasFailed && kind == kPage) {
    answer = messagePage(answer.status, "No deliveries now", answer.body);
  }
  protectPage(answer);
  return answer;
}

Answer WebService::route(const Request &request) const {
  const std::string_view path = pathOf(request);
  if (path == kLiveness) {
    return textAnswer(200, "ok\n");
  }
  if (isProbe(path)) {
    return readiness();
  }
  if (path.starts_with(OrderService::kPrefix)) {
    return m_calls.answer(request);
  }
  if (auto refusal = m_guard.refusal(request)) {
    return *refusal;
  }
  if (path == kMetrics && isRead(request)) {
    return {.contentType = "text/plain; version=0.0.4; charset=utf-8", .body = m_metrics.text()};
  }
  if (const auto page = m_pages.answer(request)) {
    return *page;
  }
  return isRead(request)
             ? messagePage(404, "Unknown page", "There is no page “" + std::string(path) + "”.")
             : m_calls.answer(request);
}

RequestPool WebService::poolOf(const Request &request) {
  const std::string_view path = pathOf(request);
  if (path == kLiveness || path == kMetrics) {
    return RequestPool::None;
  }
  if (isProbe(path)) {
    return RequestPool::Probes;
  }
  return kindOf(request) == "send" ? RequestPool::Sends : RequestPool::Lookups;
}

void WebService::logRefusal(const Request &request, const Answer &answer) {
  if (m_log != nullptr) {
    m_log->write(request, answer, std::chrono::seconds(0));
  }
}

Answer WebService::readiness() const {
  try {
    static_cast<void>(m_store.delivery(""));
    return textAnswer(200, "ok\n");
  } catch (const std::exception &error) {
    return textAnswer(503, error.what());
  }
}

}  // namespace cartonpick::orders
