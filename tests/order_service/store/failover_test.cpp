// The store in a PostgreSQL of two servers, of which one takes changes.

#include "postgres_cluster.h"
#include "sample_data.h"
#include "store/sql_connection.h"
#include "store/sql_store.h"
#include "store/store_error.h"

#include <gtest/gtest.h>
#include <thread>

namespace cartonpick::orders {

namespace {

PickReport withQuantity(std::int32_t quantity) {
  PickReport line = pickReport();
  line.quantity = quantity;
  return line;
}

std::string settingOf(const SqlAddress &address, const std::string &name) {
  SqlConnection connection(address);
  std::string value;
  connection.session() << "SHOW " + name, soci::into(value);
  return value;
}

/// Without deliveries the standby would have to be waited for.
const PostgresCluster &filled(const PostgresCluster &cluster) {
  SqlStore(SqlAddress(cluster.url())).load(sampleDeliveries());
  return cluster;
}

void setReadOnly(const PostgresCluster &cluster) {
  cluster.execute("ALTER SYSTEM SET default_transaction_read_only = on");
  cluster.execute("SELECT pg_reload_conf()");
  // The server tells its connections when it takes the setting itself.
  while (settingOf(SqlAddress(cluster.url()), "default_transaction_read_only") != "on") {
    std::this_thread::yield();
  }
}

}  // namespace

class FailoverTest : public testing::Test {
 protected:
  SqlAddress bothHosts() const { return SqlAddress(m_primary.url() + ',' + m_standby.host()); }

  FailoverTest() : m_standby(PostgresCluster::StandbyOf{filled(m_primary)}) {}

  PostgresCluster m_primary;
  PostgresCluster m_standby;
};

TEST_F(FailoverTest, AStoreWhosePrimaryWasAwayDoesNotStayOnTheStandby) {
  SqlStore store(bothHosts());
  m_primary.crash();
  EXPECT_THROW(store.delivery("D1"), StoreUnavailable);
  EXPECT_THROW(store.store({pickReport()}), StoreUnavailable);
  m_primary.start();
  EXPECT_NO_THROW(store.store({pickReport()}));
  EXPECT_TRUE(store.delivery("D1").isSent);
}

TEST_F(FailoverTest, AStoreFollowsTheRoleToTheStandby) {
  SqlStore store(bothHosts());
  store.store({withQuantity(1)});
  m_primary.crash();
  m_standby.execute("SELECT pg_promote()");
  EXPECT_NO_THROW(store.store({withQuantity(2)}));
}

TEST_F(FailoverTest, AConnectionThatTurnedReadOnlyIsDropped) {
  SqlStore store(bothHosts());
  store.store({withQuantity(1)});
  m_standby.execute("SELECT pg_promote()");
  setReadOnly(m_primary);
  EXPECT_NO_THROW(store.store({withQuantity(2)}));
  EXPECT_EQ(store.picked({.delivery = "D1"}).back().report.quantity, 2);
}

TEST_F(FailoverTest, AStoreThatTakesNoChangesIsNotAvailable) {
  SqlStore store(SqlAddress(m_primary.url()));
  setReadOnly(m_primary);
  EXPECT_THROW(store.store({pickReport()}), StoreUnavailable);
  EXPECT_EQ(store.delivery("D1").lines.size(), 2U);
}

TEST_F(FailoverTest, AStoreThatTakesNoChangesCanBeOpenedAndRead) {
  PickReport notOrdered = pickReport();
  notOrdered.delivery = "D9";
  SqlStore(SqlAddress(m_primary.url())).store({notOrdered});
  setReadOnly(m_primary);
  EXPECT_EQ(SqlStore(SqlAddress(m_primary.url())).picked({}).size(), 1U);
}

TEST(ConnectionParameters, OfTheUrlWinOverThoseOfTheService) {
  const PostgresCluster cluster;
  EXPECT_EQ(settingOf(SqlAddress(cluster.url()), "application_name"), "cartonpick-orders");
  const SqlAddress address(cluster.url() +
                           "&application_name=north&options=-c%20lock_timeout%3D7s%20-c%20"
                           "search_path%3Dpicking");
  EXPECT_EQ(settingOf(address, "application_name"), "north");
  EXPECT_EQ(settingOf(address, "lock_timeout"), "7s");
  EXPECT_EQ(settingOf(address, "search_path"), "picking");
  EXPECT_EQ(settingOf(address, "idle_in_transaction_session_timeout"), "20s");
}

}  // namespace cartonpick::orders
