#include "http/worker_pool.h"

#include <barrier>
#include <future>
#include <gtest/gtest.h>
#include <latch>

namespace cartonpick::orders {

namespace {

std::shared_ptr<const Job> jobOf(std::function<void()> run, std::size_t bytes = 0) {
  return std::make_shared<const Job>(Job{.run = std::move(run), .bytes = bytes});
}

/// A pool of one thread, which a job keeps busy until it is released.
class WorkerPoolTest : public testing::Test {
 protected:
  WorkerPoolTest() {
    m_pool.add(jobOf([this] {
      m_begin.set_value();
      m_release.get_future().wait();
    }));
    m_begin.get_future().wait();
  }
  ~WorkerPoolTest() override { release(); }

  void release() {
    if (!m_isReleased) {
      m_isReleased = true;
      m_release.set_value();
    }
  }
  WorkerPool &pool() { return m_pool; }
  std::string metrics() const { return m_metrics.text(); }

 private:
  bool m_isReleased = false;
  std::promise<void> m_begin;
  std::promise<void> m_release;
  Metrics m_metrics;
  WorkerPool m_pool{"test", {.threads = 1, .jobs = 2, .bytes = 100}, m_metrics};
};

}  // namespace

TEST_F(WorkerPoolTest, TakesNoMoreJobsThanMayWait) {
  EXPECT_TRUE(pool().add(jobOf([] {})));
  EXPECT_TRUE(pool().add(jobOf([] {})));
  EXPECT_FALSE(pool().add(jobOf([] {})));
}

TEST_F(WorkerPoolTest, TakesNoMoreBytesThanMayWait) {
  EXPECT_TRUE(pool().add(jobOf([] {}, 101)));
  EXPECT_FALSE(pool().add(jobOf([] {}, 1)));
}

TEST_F(WorkerPoolTest, RemovesAJobThatWaits) {
  const auto job = jobOf([] { FAIL() << "the job was taken back"; }, 100);
  ASSERT_TRUE(pool().add(job));
  EXPECT_TRUE(pool().withdraw(job));
  EXPECT_FALSE(pool().withdraw(job));
  std::promise<void> done;
  EXPECT_TRUE(pool().add(jobOf([&] { done.set_value(); }, 100)));
  release();
  done.get_future().wait();
}

TEST(WorkerPool, RunsAsManyJobsAtOnceAsItHasThreads) {
  constexpr int kThreads = 8;
  Metrics metrics;
  std::barrier begun(kThreads);
  std::latch done(kThreads);
  WorkerPool pool("test", {.threads = kThreads, .jobs = kThreads, .bytes = 0}, metrics);
  for (int i = 0; i < kThreads; ++i) {
    ASSERT_TRUE(pool.add(jobOf([&] {
      begun.arrive_and_wait();
      done.count_down();
    })));
  }
  done.wait();
}

TEST_F(WorkerPoolTest, ReportsItsUse) {
  pool().add(jobOf([] {}));
  EXPECT_FALSE(pool().isIdle());
  for (const std::string line : {"cartonpick_pool_threads{pool=\"test\"} 1\n",
                                 "cartonpick_pool_busy_threads{pool=\"test\"} 1\n",
                                 "cartonpick_queue_length{pool=\"test\"} 1\n",
                                 "cartonpick_queue_wait_seconds_count{pool=\"test\"} 1\n"}) {
    EXPECT_NE(metrics().find(line), std::string::npos) << line;
  }
}

}  // namespace cartonpick::orders
