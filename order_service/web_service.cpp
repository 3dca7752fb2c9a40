#include "web_service.h"

#include "pages/assets.h"
#include "pages/html_page.h"
#include "store/store_error.h"

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

constexpr int kUnavailable = 503;

/// Returns true if the path asks for the state of the store.
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

/// Returns true if the request may change what is stored of a delivery.
bool isChange(const Request &request) {
  const std::string kind = kindOf(request);
  return kind == "send" || (kind == kPage && request.method == "POST" &&
                            SupervisorPages::isReopening(pathOf(request)));
}

/// Nothing in a page runs or styles it; files of this service alone do.
constexpr auto kPolicy =
    "default-src 'none'; base-uri 'none'; form-action 'self'; frame-ancestors 'none'; "
    "img-src 'self'; style-src 'self'; script-src 'self'; connect-src 'self'";

/// Adds the header fields of every page.
void protectPage(Answer &answer) {
  if (answer.contentType.starts_with("text/html")) {
    answer.headers.insert(answer.headers.end(), {{"Content-Security-Policy", kPolicy},
                                                 {"X-Content-Type-Options", "nosniff"},
                                                 {"Cache-Control", "no-store"}});
  }
}

}  // namespace

WebService::WebService(SqlStore &store, AccessGuard guard, RequestLog *log, ErrorLog *errors)
    : m_store(store),
      m_calls(store),
      m_pages(store, guard.takesToken()),
      m_guard(std::move(guard)),
      m_log(log),
      m_errors(errors),
      m_readiness([this] { return checkStore(); }) {
  for (const auto &[name, use] : {std::pair{"reads", StoreUse::Read},
                                  {"writes", StoreUse::Write},
                                  {"probes", StoreUse::Probe}}) {
    m_metrics.addPool(PoolKind::Connections, name,
                      [&store, use = use] { return store.useOf(use); });
  }
}

Answer WebService::answer(const Request &request) {
  const auto begin = std::chrono::steady_clock::now();
  const std::string kind = kindOf(request);
  Answer answer;
  bool hasFailed = false;
  try {
    answer = route(request);
  } catch (const StoreUnavailable &error) {
    answer = failure(kUnavailable, StoreUnavailable::kOutward, error);
    hasFailed = true;
  } catch (const std::exception &error) {
    answer = failure(500, "the request failed", error);
    hasFailed = true;
  }
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
  m_metrics.count(kind, answer.status, time);
  if (m_log != nullptr) {
    m_log->write(request, answer, time);
  }
  if (hasFailed && kind == kPage) {
    Answer page = messagePage(answer.status, "No deliveries now", answer.body);
    page.headers.insert(page.headers.end(), answer.headers.begin(), answer.headers.end());
    answer = std::move(page);
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
    return m_readiness.answer();
  }
  if (path.starts_with(OrderService::kPrefix)) {
    return m_calls.answer(request);
  }
  if (const auto asset = assetAnswer(request)) {
    return *asset;
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
  return isChange(request) ? RequestPool::Sends : RequestPool::Lookups;
}

void WebService::logRefusal(const Request &request, const Answer &answer) {
  if (m_log != nullptr) {
    m_log->write(request, answer, std::chrono::seconds(0));
  }
}

/// The details go to the log alone.
Answer WebService::failure(int status, const std::string &outward,
                           const std::exception &error) const {
  if (m_errors != nullptr) {
    m_errors->write(error.what());
  }
  Answer answer = textAnswer(status, outward);
  if (status == kUnavailable) {
    answer.headers.emplace_back("Retry-After", "1");
  }
  return answer;
}

Answer WebService::checkStore() const {
  try {
    m_store.probe();
    return textAnswer(200, "ok\n");
  } catch (const std::exception &error) {
    return failure(kUnavailable, StoreUnavailable::kOutward, error);
  }
}

}  // namespace cartonpick::orders
