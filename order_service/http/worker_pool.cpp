#include "http/worker_pool.h"

#include <algorithm>
#include <utility>

namespace cartonpick::orders {

WorkerPool::WorkerPool(std::string name, const Limits &limits, Metrics &metrics)
    : m_name(std::move(name)), m_limits(limits), m_metrics(metrics) {
  metrics.addPool(PoolKind::Threads, m_name, [this] { return use(); });
  std::generate_n(std::back_inserter(m_threads), limits.threads,
                  [this] { return std::jthread([this] { work(); }); });
}

WorkerPool::~WorkerPool() {
  m_metrics.removePool(PoolKind::Threads, m_name);
  const std::lock_guard lock(m_mutex);
  m_isEnding = true;
  m_queue.clear();
  m_hasWork.notify_all();
}

bool WorkerPool::add(const std::shared_ptr<const Job> &job) {
  std::unique_lock lock(m_mutex);
  // A job alone is taken, however large it is.
  if (!m_queue.empty() &&
      (m_queue.size() >= m_limits.jobs || m_queuedBytes + job->bytes > m_limits.bytes)) {
    return false;
  }
  m_queue.push_back({job, Clock::now()});
  m_queuedBytes += job->bytes;
  wakeOne();
  return true;
}

bool WorkerPool::withdraw(const std::shared_ptr<const Job> &job) {
  const std::lock_guard lock(m_mutex);
  const auto entry = std::find_if(m_queue.begin(), m_queue.end(),
                                  [&](const Entry &queued) { return queued.job == job; });
  if (entry == m_queue.end()) {
    return false;
  }
  m_queuedBytes -= job->bytes;
  m_queue.erase(entry);
  return true;
}

bool WorkerPool::isIdle() const {
  const std::lock_guard lock(m_mutex);
  return m_busy == 0;
}

/// Wakes a thread unless one is about to take a job; that one wakes the next. To wake a thread for
/// each job at once would take more time than the jobs: lookups on SQLite were three times as slow.
void WorkerPool::wakeOne() {
  if (m_sleeping > 0 && !m_isWaking && !m_queue.empty()) {
    m_isWaking = true;
    m_hasWork.notify_one();
  }
}

void WorkerPool::work() {
  std::unique_lock lock(m_mutex);
  while (true) {
    while (!m_isEnding && m_queue.empty()) {
      ++m_sleeping;
      m_hasWork.wait(lock);
      --m_sleeping;
      m_isWaking = false;
    }
    if (m_isEnding) {
      return;
    }
    Entry entry = std::move(m_queue.front());
    m_queue.pop_front();
    m_queuedBytes -= entry.job->bytes;
    ++m_busy;
    m_waits.add(Clock::now() - entry.since);
    wakeOne();
    lock.unlock();
    entry.job->run();
    entry.job.reset();
    lock.lock();
    --m_busy;
  }
}

PoolUse WorkerPool::use() const {
  const std::lock_guard lock(m_mutex);
  return {m_limits.threads, m_busy, m_queue.size(), m_waits};
}

}  // namespace cartonpick::orders
