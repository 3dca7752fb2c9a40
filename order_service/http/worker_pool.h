#pragma once

#include "http/metrics.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace cartonpick::orders {

/// Work for a pool, and the memory that it holds.
struct Job {
  std::function<void()> run;
  std::size_t bytes = 0;
};

/// Threads that run the jobs of a queue of limited length. May be used from several threads at
/// once.
class WorkerPool {
 public:
  struct Limits {
    std::size_t threads;
    std::size_t jobs;   ///< that wait
    std::size_t bytes;  ///< of these jobs
  };

  /// The name is for the metrics, which must outlive the pool.
  WorkerPool(std::string name, const Limits &limits, Metrics &metrics);
  WorkerPool(const WorkerPool &) = delete;
  WorkerPool &operator=(const WorkerPool &) = delete;
  /// Drops the jobs that wait, and returns when those under way have ended.
  ~WorkerPool();

  /// Adds a job to the queue. Returns false if the queue is full.
  bool add(const std::shared_ptr<const Job> &job);

  /// Removes a job from the queue. Returns false if a thread has started it.
  bool withdraw(const std::shared_ptr<const Job> &job);

  /// Returns true if no job is under way.
  bool isIdle() const;

 private:
  using Clock = std::chrono::steady_clock;

  struct Entry {
    std::shared_ptr<const Job> job;
    Clock::time_point since;
  };

  PoolUse use() const;
  void work();
  void wakeOne();

  std::string m_name;
  Limits m_limits;
  Metrics &m_metrics;
  mutable std::mutex m_mutex;
  std::condition_variable m_hasWork;
  std::list<Entry> m_queue;
  std::size_t m_queuedBytes = 0;
  std::size_t m_busy = 0;
  Histogram m_waits;
  std::size_t m_sleeping = 0;  ///< threads, the one that was woken included until it runs
  bool m_isWaking = false;     ///< a thread was woken and does not run yet
  bool m_isEnding = false;
  /// The last member: the threads use the others.
  std::vector<std::jthread> m_threads;
};

}  // namespace cartonpick::orders
