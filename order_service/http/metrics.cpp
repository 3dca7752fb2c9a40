#include "http/metrics.h"

#include <sstream>

namespace cartonpick::orders {

namespace {

void writeHead(std::ostream &out, const std::string &name, const std::string &type,
               const std::string &help) {
  out << "# HELP " << name << ' ' << help << "\n# TYPE " << name << ' ' << type << '\n';
}

}  // namespace

void Metrics::count(const std::string &kind, int status, Seconds time) {
  const std::lock_guard lock(m_mutex);
  ++m_requests[{kind, status}];
  add(m_seconds[kind], time);
}

void Metrics::countRefusal(const std::string &reason) {
  const std::lock_guard lock(m_mutex);
  ++m_refusals[reason];
}

void Metrics::countWait(const std::string &pool, Seconds time) {
  const std::lock_guard lock(m_mutex);
  add(m_waits[pool], time);
}

void Metrics::addPool(const std::string &pool, std::function<PoolUse()> use) {
  const std::lock_guard lock(m_mutex);
  m_pools[pool] = std::move(use);
}

void Metrics::removePool(const std::string &pool) {
  const std::lock_guard lock(m_mutex);
  m_pools.erase(pool);
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
  write(text, "cartonpick_request_seconds", "kind", m_seconds);
  writeHead(text, "cartonpick_refusals_total", "counter",
            "Requests and connections that the HTTP server refused.");
  for (const auto &[reason, count] : m_refusals) {
    text << "cartonpick_refusals_total{reason=\"" << reason << "\"} " << count << '\n';
  }
  writeHead(text, "cartonpick_connections", "gauge", "Connections that are open.");
  text << "cartonpick_connections " << m_connections << '\n';
  writePools(text);
  return text.str();
}

void Metrics::add(Histogram &histogram, Seconds time) {
  ++histogram.count;
  histogram.sum += time.count();
  for (std::size_t i = 0; i < kBounds.size(); ++i) {
    histogram.within[i] += time.count() <= kBounds[i] ? 1 : 0;
  }
}

void Metrics::write(std::ostream &out, const std::string &name, const std::string &label,
                    const Histograms &histograms) {
  for (const auto &[value, histogram] : histograms) {
    std::string labels = "{";
    labels.append(label).append("=\"").append(value).append("\"");
    for (std::size_t i = 0; i < kBounds.size(); ++i) {
      out << name << "_bucket" << labels << ",le=\"" << kBounds[i] << "\"} " << histogram.within[i]
          << '\n';
    }
    out << name << "_bucket" << labels << ",le=\"+Inf\"} " << histogram.count << '\n'
        << name << "_sum" << labels << "} " << histogram.sum << '\n'
        << name << "_count" << labels << "} " << histogram.count << '\n';
  }
}

void Metrics::writePools(std::ostream &out) const {
  const auto gauge = [&](const std::string &name, const std::string &help,
                         std::size_t PoolUse::*value) {
    writeHead(out, name, "gauge", help);
    for (const auto &[pool, use] : m_pools) {
      out << name << "{pool=\"" << pool << "\"} " << use().*value << '\n';
    }
  };
  gauge("cartonpick_pool_threads", "Threads that answer requests.", &PoolUse::threads);
  gauge("cartonpick_pool_busy_threads", "Threads that answer a request now.", &PoolUse::busy);
  gauge("cartonpick_queue_length", "Requests that wait for a thread.", &PoolUse::waiting);
  writeHead(out, "cartonpick_queue_wait_seconds", "histogram",
            "From a request's end to a thread's start with it.");
  write(out, "cartonpick_queue_wait_seconds", "pool", m_waits);
}

}  // namespace cartonpick::orders
