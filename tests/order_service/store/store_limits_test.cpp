// What waits for too long fails as not available, and keeps no other kind of call waiting.

#include "either_store.h"
#include "sample_data.h"
#include "store/sql_connection.h"
#include "store/sql_store.h"
#include "store/store_error.h"

#include <atomic>
#include <boost/asio/io_context.hpp>
#include <boost/asio/local/stream_protocol.hpp>
#include <filesystem>
#include <future>
#include <soci/soci.h>
#include <thread>
#include <vector>

namespace cartonpick::orders {

namespace {

constexpr auto kShort = std::chrono::milliseconds(1000);
constexpr int kMoreThanConnections = 16;

PickReport withQuantity(std::int32_t quantity) {
  PickReport line = pickReport();
  line.quantity = quantity;
  return line;
}

/// Restarts the server, as a reload would take effect some time later.
void setSynchronousStandby(PostgresCluster &cluster, const std::string &name) {
  cluster.execute("ALTER SYSTEM SET synchronous_standby_names = '" + name + '\'');
  cluster.crash();
  cluster.start();
}

/// Runs the call in that many threads, and returns how many found the store not available.
template <class Call>
int countUnavailable(int threads, const Call &call) {
  std::atomic_int count = 0;
  {
    std::vector<std::jthread> running;
    for (int i = 0; i < threads; ++i) {
      running.emplace_back([&, i] {
        try {
          call(i);
        } catch (const StoreUnavailable &) {
          ++count;
        }
      });
    }
  }
  return count;
}

/// Closes each connection at once, as a server does that ends.
class EndingServer {
 public:
  explicit EndingServer(const std::string &path)
      : m_acceptor(m_io, removed(path)), m_thread([this](const std::stop_token &stop) {
          // Without blocking, to close before the client sends.
          m_acceptor.non_blocking(true);
          while (!stop.stop_requested()) {
            boost::system::error_code error;
            m_acceptor.accept(error);
            m_connections += error ? 0 : 1;
          }
        }) {}

  void waitForConnections(int count) const {
    while (m_connections < count) {
      std::this_thread::yield();
    }
  }

 private:
  static std::string removed(const std::string &path) {
    std::filesystem::remove(path);
    return path;
  }

  boost::asio::io_context m_io;
  boost::asio::local::stream_protocol::acceptor m_acceptor;
  std::atomic_int m_connections = 0;
  std::jthread m_thread;
};

}  // namespace

class StoreLimitsTest : public EitherStoreTest {
 protected:
  StoreLimitsTest() { m_store.load(sampleDeliveries()); }

  SqlStore &store() { return m_store; }

 private:
  SqlStore m_store{address(), StoreLimits::within(kShort)};
};

INSTANTIATE_TEST_SUITE_P(Both, StoreLimitsTest, bothDialects(), dialectName);

TEST_P(StoreLimitsTest, AReportThatWaitsForAnotherWriterFailsAndIsTakenLater) {
  {
    SqlConnection other(address());
    soci::transaction transaction(other.session());
    other.session() << "UPDATE delivery SET changed_at = 'x' WHERE number = 'D1'";
    EXPECT_EQ(countUnavailable(3, [&](int i) { store().store({withQuantity(i)}); }), 3);
    EXPECT_FALSE(store().delivery("D1").isSent);
  }
  store().store({withQuantity(1)});
  EXPECT_TRUE(store().delivery("D1").isSent);
}

TEST_P(StoreLimitsTest, AStatementThatTakesTooLongFails) {
  // Some 10^18 rows.
  const std::string many = "(SELECT 1 FROM article a, article b, article c, article d, article e)";
  std::vector<OrderLine> lines(1, orderLine());
  std::vector<Article> articles;
  for (int i = 0; i < 4000; ++i) {
    articles.push_back({std::to_string(i), "item", "x"});
  }
  store().load({lines, articles});
  ConnectionPool pool(address(), StoreLimits::within(kShort));
  EXPECT_THROW(pool.with(StoreUse::Read,
                         [&](SqlConnection &connection) {
                           long long count = 0;
                           connection.session() << "SELECT count(*) FROM " + many + " AS rows",
                               soci::into(count);
                         }),
               StoreUnavailable);
  EXPECT_NO_THROW(store().probe());
}

TEST_P(StoreLimitsTest, AProbeLeavesNothingBehind) {
  const auto before = store().summaries("");
  store().probe();
  EXPECT_EQ(store().summaries("").size(), before.size());
  EXPECT_TRUE(store().delivery("probe").lines.empty());
}

/// PostgreSQL has no limit to this wait, as the statement has ended.
TEST(StoreLimitsInPostgres, ReportsThatWaitForAStandbyFailWhileLookupsAreAnswered) {
  PostgresCluster cluster;
  // Long enough for every lookup on a busy machine.
  constexpr auto kLong = std::chrono::seconds(6);
  SqlStore store(SqlAddress(cluster.url()), StoreLimits::within(kLong));
  store.load(sampleDeliveries());
  setSynchronousStandby(cluster, "away");
  std::atomic_int lookups = 0;
  EXPECT_EQ(countUnavailable(kMoreThanConnections,
                             [&](int i) {
                               const auto lookUp = [&] {
                                 EXPECT_EQ(store.delivery("D 2/ß").lines.size(), 1U);
                                 ++lookups;
                               };
                               const auto beside = std::async(std::launch::async, lookUp);
                               store.store({withQuantity(i)});
                             }),
            kMoreThanConnections);
  EXPECT_EQ(lookups, kMoreThanConnections);
  EXPECT_NO_THROW(store.probe());
  setSynchronousStandby(cluster, "");
  for (int i = 0; i < kMoreThanConnections; ++i) {
    store.store({withQuantity(i)});
  }
  EXPECT_EQ(store.picked({}).size(), static_cast<std::size_t>(kMoreThanConnections));
}

TEST(StoreLimitsInPostgres, AReportThatWasNotConfirmedByAStandbyWaitsForItAgain) {
  PostgresCluster cluster;
  SqlStore store(SqlAddress(cluster.url()), StoreLimits::within(kShort));
  store.load(sampleDeliveries());
  setSynchronousStandby(cluster, "away");
  EXPECT_THROW(store.store({pickReport()}), StoreUnavailable);
  EXPECT_THROW(store.store({pickReport()}), StoreUnavailable);
}

TEST(StoreLimitsInPostgres, AnInterruptionWorksAfterTheServerHasEnded) {
  PostgresCluster cluster;
  SqlConnection connection{SqlAddress(cluster.url())};
  cluster.crash();
  EndingServer server(cluster.host() + "/.s.PGSQL.5432");
  constexpr int kInterruptions = 500;
  for (int i = 1; i <= kInterruptions; ++i) {
    connection.interrupt();
    server.waitForConnections(i);
  }
}

TEST(StoreLimitsInPostgres, LookupsThatHangDoNotDelayReports) {
  const PostgresCluster cluster;
  SqlStore store(SqlAddress(cluster.url()), StoreLimits::within(kShort));
  store.load(sampleDeliveries());
  SqlConnection other{SqlAddress(cluster.url())};
  soci::transaction transaction(other.session());
  other.session() << "LOCK TABLE order_line IN ACCESS EXCLUSIVE MODE";
  std::atomic_bool isStored = false;
  EXPECT_EQ(countUnavailable(kMoreThanConnections + 1,
                             [&](int i) {
                               if (i == kMoreThanConnections) {
                                 store.store({pickReport()});
                                 isStored = true;
                               } else {
                                 store.delivery("D1");
                               }
                             }),
            kMoreThanConnections);
  EXPECT_TRUE(isStored);
  EXPECT_NO_THROW(store.probe());
}

}  // namespace cartonpick::orders
