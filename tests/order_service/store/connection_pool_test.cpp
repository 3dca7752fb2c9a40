#include "store/connection_pool.h"

#include "store/store_error.h"
#include "temporary_folder.h"

#include <future>
#include <gtest/gtest.h>
#include <thread>

namespace cartonpick::orders {

namespace {

/// A pool with one connection for reads, which a call uses until it is released.
class ConnectionPoolTest : public testing::Test {
 protected:
  ConnectionPoolTest() { m_begin.get_future().wait(); }
  ~ConnectionPoolTest() override { release(); }

  void release() {
    if (m_call.joinable()) {
      m_release.set_value();
      m_call.join();
    }
  }
  ConnectionPool &pool() { return m_pool; }
  PoolUse reads() const { return m_pool.useOf(StoreUse::Read); }

 private:
  TemporaryFolder m_folder;
  ConnectionPool m_pool{SqlAddress(m_folder.path("store.sqlite")),
                        {.connection = std::chrono::minutes(1), .readers = 1}};
  std::promise<void> m_begin;
  std::promise<void> m_release;
  std::thread m_call{[this] {
    m_pool.with(StoreUse::Read, [this](SqlConnection &) {
      m_begin.set_value();
      m_release.get_future().wait();
    });
  }};
};

}  // namespace

TEST_F(ConnectionPoolTest, ReportsHowManyConnectionsAreInUse) {
  EXPECT_EQ(reads().size, 1U);
  EXPECT_EQ(reads().busy, 1U);
  EXPECT_EQ(pool().useOf(StoreUse::Write).busy, 0U);
  release();
  EXPECT_EQ(reads().busy, 0U);
}

TEST_F(ConnectionPoolTest, CountsTheCallsThatWaitForAConnection) {
  std::thread call([&] { pool().with(StoreUse::Read, [](SqlConnection &) {}); });
  while (reads().waiting == 0) {
    std::this_thread::yield();
  }
  EXPECT_EQ(reads().waits.count, 1U);
  release();
  call.join();
  EXPECT_EQ(reads().waiting, 0U);
  EXPECT_EQ(reads().waits.count, 2U);
}

TEST(ConnectionPool, CountsTheWaitOfACallThatGetsNoConnection) {
  ConnectionPool pool(SqlAddress(SqlAddress::kInMemory),
                      {.connection = std::chrono::milliseconds(1)});
  pool.with(StoreUse::Read, [&](SqlConnection &) {
    EXPECT_THROW(pool.with(StoreUse::Write, [](SqlConnection &) {}), StoreUnavailable);
  });
  EXPECT_EQ(pool.useOf(StoreUse::Write).waits.count, 1U);
  EXPECT_EQ(pool.useOf(StoreUse::Write).waiting, 0U);
}

}  // namespace cartonpick::orders
