#include "http/metrics.h"

#include <sstream>

namespace cartonpick::orders {

namespace {

void writeHead(std::ostream &out, const std::string &name, const std::string &type,
               const std::string &help) {
  out << "# HELP " << name << ' ' << help << "\n# TYPE " << name << ' ' << type << '\n';
}

void writeHistogram(std::ostream &out, const std::string &name, const std::string &label,
                    const Histogram &histogram) {
  const auto &bounds = Histogram::kBounds;
  for (std::size_t i = 0; i < bounds.size(); ++i) {
    out << name << "_bucket{" << label << ",le=\"" << bounds[i] << "\"} " << histogram.within[i]
        << '\n';
  }
  out << name << "_bucket{" << label << ",le=\"+Inf\"} " << histogram.count << '\n'
      << name << "_sum{" << label << "} " << histogram.sum << '\n'
      << name << "_count{" << label << "} " << histogram.count << '\n';
}

std::string labelOf(const std::string &name, const std::string &value) {
  return name + "=\"" + value + '"';
}

struct Metric {
  std::string name;
  std::string help;
};

/// The metrics of one kind of pools.
struct PoolMetrics {
  std::string label;
  Metric size;
  Metric busy;
  Metric waiting;
  Metric waits;
};

const PoolMetrics &metricsOf(PoolKind kind) {
  static const PoolMetrics kThreads = {
      .label = "pool",
      .size = {"cartonpick_pool_threads", "Threads that answer requests."},
      .busy = {"cartonpick_pool_busy_threads", "Threads that answer a request now."},
      .waiting = {"cartonpick_queue_length", "Requests that wait for a thread."},
      .waits = {"cartonpick_queue_wait_seconds",
                "From a request's end to a thread's start with it."}};
  static const PoolMetrics kConnections = {
      .label = "use",
      .size = {"cartonpick_store_connections", "Connections to the store that there may be."},
      .busy = {"cartonpick_store_busy_connections", "Connections to the store that calls use now."},
      .waiting = {"cartonpick_store_queue_length",
                  "Calls that wait for a connection to the store."},
      .waits = {"cartonpick_store_queue_wait_seconds",
                "From a call of the store to its connection."}};
  return kind == PoolKind::Threads ? kThreads : kConnections;
}

void writePools(std::ostream &out, const PoolMetrics &metrics,
                const std::map<std::string, PoolUse> &pools) {
  const auto gauge = [&](const Metric &metric, std::size_t PoolUse::*value) {
    writeHead(out, metric.name, "gauge", metric.help);
    for (const auto &[name, use] : pools) {
      out << metric.name << '{' << labelOf(metrics.label, name) << "} " << use.*value << '\n';
    }
  };
  gauge(metrics.size, &PoolUse::size);
  gauge(metrics.busy, &PoolUse::busy);
  gauge(metrics.waiting, &PoolUse::waiting);
  writeHead(out, metrics.waits.name, "histogram", metrics.waits.help);
  for (const auto &[name, use] : pools) {
    writeHistogram(out, metrics.waits.name, labelOf(metrics.label, name), use.waits);
  }
}

}  // namespace

void Metrics::count(const std::string &kind, int status, Seconds time) {
  const std::lock_guard lock(m_mutex);
  ++m_requests[{kind, status}];
  m_seconds[kind].add(time);
}

void Metrics::countRefusal(const std::string &reason) {
  const std::lock_guard lock(m_mutex);
  ++m_refusals[reason];
}

void Metrics::addPool(PoolKind kind, const std::string &name, std::function<PoolUse()> use) {
  const std::lock_guard lock(m_mutex);
  m_pools[kind][name] = std::move(use);
}

void Metrics::removePool(PoolKind kind, const std::string &name) {
  const std::lock_guard lock(m_mutex);
  m_pools[kind].erase(name);
}

std::string Metrics::text() const {
  const std::lock_guard lock(m_mutex);
  std::ostringstream text;
  writeHead(text, "cartonpick_build_info", "gauge", "The version that runs; always 1.");
  text << "cartonpick_build_info{version=\"" CARTONPICK_VERSION "\"} 1\n";
  writeHead(text, "cartonpick_requests_total", "counter", "Requests that were answered.");
  for (const auto &[key, count] : m_requests) {
    text << "cartonpick_requests_total{kind=\"" << key.first << "\",status=\"" << key.second
         << "\"} " << count << '\n';
  }
  writeHead(text, "cartonpick_request_seconds", "histogram",
            "From a thread's start with a request to its answer.");
  for (const auto &[kind, histogram] : m_seconds) {
    writeHistogram(text, "cartonpick_request_seconds", labelOf("kind", kind), histogram);
  }
  writeHead(text, "cartonpick_refusals_total", "counter",
            "Requests and connections that the HTTP server refused.");
  for (const auto &[reason, count] : m_refusals) {
    text << "cartonpick_refusals_total{reason=\"" << reason << "\"} " << count << '\n';
  }
  writeHead(text, "cartonpick_connections", "gauge", "Connections that are open.");
  text << "cartonpick_connections " << m_connections << '\n';
  for (const auto &[kind, pools] : m_pools) {
    std::map<std::string, PoolUse> uses;
    for (const auto &[name, use] : pools) {
      uses[name] = use();
    }
    writePools(text, metricsOf(kind), uses);
  }
  return text.str();
}

}  // namespace cartonpick::orders
