#include "store/sql_store.h"

#include "postgres_cluster.h"
#include "sample_data.h"
#include "store/sql_connection.h"
#include "stored_reports.h"
#include "temporary_folder.h"

#include <SQLiteCpp/Database.h>
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>
#include <utility>

namespace cartonpick::orders {

namespace {

PickReport withQuantity(std::int32_t quantity) {
  PickReport line = pickReport();
  line.quantity = quantity;
  return line;
}

OrderLine withDelivery(const std::string &delivery, const std::string &item) {
  OrderLine line = orderLine();
  line.delivery = delivery;
  line.article.item = item;
  return line;
}

std::vector<std::string> itemsOf(const std::vector<Article> &articles) {
  std::vector<std::string> items;
  for (const Article &article : articles) {
    items.push_back(article.item);
  }
  return items;
}

std::vector<int> quantitiesOf(const std::vector<ReceivedReport> &lines) {
  std::vector<int> quantities;
  for (const ReceivedReport &stored : lines) {
    quantities.push_back(stored.report.quantity);
  }
  return quantities;
}

}  // namespace

/// Every test is one for either database.
class SqlStoreTest : public testing::TestWithParam<SqlDialect> {
 protected:
  SqlAddress address() const {
    return SqlAddress(m_cluster ? m_cluster->url() : m_folder.path("store.sqlite"));
  }

 private:
  TemporaryFolder m_folder;
  std::unique_ptr<PostgresCluster> m_cluster =
      GetParam() == SqlDialect::Postgres ? std::make_unique<PostgresCluster>() : nullptr;
};

INSTANTIATE_TEST_SUITE_P(Both, SqlStoreTest,
                         testing::Values(SqlDialect::Sqlite, SqlDialect::Postgres),
                         [](const testing::TestParamInfo<SqlDialect> &test) {
                           return test.param == SqlDialect::Sqlite ? "Sqlite" : "Postgres";
                         });

TEST_P(SqlStoreTest, IsEmptyAtFirst) {
  const SqlStore store(address());
  EXPECT_TRUE(store.delivery("D1").lines.empty());
  EXPECT_TRUE(store.catalogue().empty());
  EXPECT_TRUE(store.picked({}).empty());
}

TEST_P(SqlStoreTest, ReturnsTheLinesOfADeliveryUnchanged) {
  SqlStore store(address());
  store.load(sampleDeliveries());
  const Deliveries deliveries = sampleDeliveries();
  for (const auto &[delivery, lines] : deliveries.all()) {
    EXPECT_EQ(store.delivery(delivery).lines, lines);
  }
  EXPECT_TRUE(store.delivery("d1").lines.empty());
  EXPECT_TRUE(store.delivery("D1 ").lines.empty());
}

TEST_P(SqlStoreTest, GivesTheCatalogueInItsOrder) {
  SqlStore store(address());
  store.load(sampleDeliveries());
  EXPECT_EQ(store.catalogue(), sampleDeliveries().catalogue());
}

TEST_P(SqlStoreTest, LoadsADeliveryAgainInPlaceOfTheOld) {
  SqlStore store(address());
  store.load({{withDelivery("D1", "A"), withDelivery("D1", "B"), withDelivery("D2", "C")}, {}});
  store.load({{withDelivery("D1", "D")}, {}});
  EXPECT_EQ(store.delivery("D1").lines, std::vector{withDelivery("D1", "D")});
  EXPECT_EQ(store.delivery("D2").lines.size(), 1U);
  EXPECT_EQ(itemsOf(store.catalogue()), (std::vector<std::string>{"A", "B", "C", "D"}));
}

TEST_P(SqlStoreTest, ReplacesAllDeliveriesAndArticlesButNothingPicked) {
  SqlStore store(address());
  store.load({{withDelivery("D1", "A"), withDelivery("D2", "C")}, {}});
  store.store({pickReport()});
  store.replace({{withDelivery("D3", "D")}, {}});
  EXPECT_TRUE(store.delivery("D1").lines.empty());
  EXPECT_EQ(store.delivery("D3").lines.size(), 1U);
  EXPECT_EQ(itemsOf(store.catalogue()), std::vector<std::string>{"D"});
  EXPECT_EQ(store.picked({}).size(), 1U);
}

TEST_P(SqlStoreTest, KnowsWhichDeliveriesWereSent) {
  SqlStore store(address());
  for (const char *number : {"D1", "D1 ", "d1"}) {
    store.load({{withDelivery(number, "A"), withDelivery(number, "B")}, {}});
  }
  EXPECT_FALSE(store.delivery("D1").isSent);
  store.store({pickReport()});
  EXPECT_TRUE(store.delivery("D1").isSent);
  EXPECT_FALSE(store.delivery("D1 ").isSent);
  EXPECT_FALSE(store.delivery("d1").isSent);
}

TEST_P(SqlStoreTest, TreatsADeliveryThatIsNotOrderedAsNotSent) {
  SqlStore store(address());
  store.store({pickReport()});
  EXPECT_FALSE(store.delivery("D1").isSent);
}

TEST_P(SqlStoreTest, StoresAFactOnce) {
  SqlStore store(address());
  store.store({withQuantity(1), withQuantity(2)});
  store.store({withQuantity(2), withQuantity(1)});
  EXPECT_EQ(store.picked({}).size(), 2U);
}

TEST_P(SqlStoreTest, KeepsTheTimeAtWhichAFactFirstCame) {
  SqlStore store(address());
  store.store({pickReport()});
  const auto before = store.picked({});
  store.store({pickReport()});
  EXPECT_EQ(store.picked({}), before);
  EXPECT_EQ(before.front().receivedAt.size(), std::string("2026-01-31 12:00:00.123456").size());
}

TEST_P(SqlStoreTest, KeepsALaterDifferentQuantityAsWell) {
  SqlStore store(address());
  store.store({withQuantity(1)});
  store.store({withQuantity(5)});
  EXPECT_EQ(quantitiesOf(store.picked({})), (std::vector{1, 5}));
}

TEST_P(SqlStoreTest, TellsFactsApartByEveryMember) {
  SqlStore store(address());
  store.store({pickReport()});
  for (const auto member : {&PickReport::delivery, &PickReport::order, &PickReport::box,
                            &PickReport::item, &PickReport::barcode, &PickReport::pickedAt}) {
    PickReport other = pickReport();
    other.*member += ' ';
    store.store({other});
  }
  EXPECT_EQ(store.picked({}).size(), 7U);
}

TEST_P(SqlStoreTest, ReturnsTextsAndNumbersUnchanged) {
  SqlStore store(address());
  const PickReport line = {.delivery = "Ü/ß €",
                           .order = "",
                           .box = "'; DROP TABLE picked_line; --",
                           .item = "\xF0\x9F\x93\xA6",
                           .barcode = "a\\b\n:c $1",
                           .quantity = -2147483647 - 1,
                           .pickedAt = "2026-02-28 23:59:59"};
  store.store({line});
  EXPECT_EQ(store.picked({.delivery = line.delivery}).front().report, line);
}

TEST_P(SqlStoreTest, FindsPickedLinesByDeliveryAndDay) {
  SqlStore store(address());
  PickReport other = withQuantity(2);
  other.delivery = "D2";
  other.pickedAt = "2026-03-01 00:00:00";
  store.store({withQuantity(1)});
  store.store({other});
  EXPECT_EQ(quantitiesOf(store.picked({})), (std::vector{1, 2}));
  EXPECT_EQ(quantitiesOf(store.picked({.delivery = "D2"})), std::vector{2});
  EXPECT_EQ(quantitiesOf(store.picked({.day = "2026-02-28"})), std::vector{1});
  EXPECT_TRUE(store.picked({.delivery = "D2", .day = "2026-02-28"}).empty());
}

TEST_P(SqlStoreTest, Survives) {
  SqlStore(address()).store({pickReport()});
  EXPECT_EQ(SqlStore(address()).picked({}).size(), 1U);
}

TEST_P(SqlStoreTest, MayBeUsedByManyThreadsOfSeveralInstances) {
  SqlStore one(address());
  SqlStore other(address());
  one.load({{withDelivery("D1", "A")}, {}});
  {
    std::array<std::jthread, 8> threads;
    for (std::int32_t i = 0; std::jthread & thread : threads) {
      thread = std::jthread([&store = i % 2 == 0 ? one : other, i] {
        store.store({withQuantity(0), withQuantity(1 + i / 2)});
        EXPECT_TRUE(store.delivery("D1").isSent);
      });
      ++i;
    }
  }
  std::vector<int> quantities = quantitiesOf(one.picked({}));
  std::sort(quantities.begin(), quantities.end());
  EXPECT_EQ(quantities, (std::vector{0, 1, 2, 3, 4}));
}

TEST_P(SqlStoreTest, MayBeOpenedForTheFirstTimeByManyAtOnce) {
  std::array<std::jthread, 8> threads;
  for (std::jthread &thread : threads) {
    thread = std::jthread([this] { EXPECT_NO_THROW(SqlStore(address()).delivery("D1")); });
  }
}

TEST(SqlStoreInPostgres, ContinuesAfterARestartOfTheDatabase) {
  PostgresCluster cluster;
  SqlStore store(SqlAddress(cluster.url()));
  store.load({{withDelivery("D1", "A")}, {}});
  store.store({withQuantity(1)});
  cluster.crash();
  EXPECT_THROW(store.delivery("D1"), std::runtime_error);
  cluster.start();
  EXPECT_TRUE(store.delivery("D1").isSent);
  store.store({withQuantity(2)});
  cluster.crash();
  cluster.start();
  store.store({withQuantity(3)});
  EXPECT_EQ(quantitiesOf(store.picked({})), (std::vector{1, 2, 3}));
}

TEST(SqlStoreInPostgres, LimitsTheWaitForAnInstanceThatHangs) {
  const PostgresCluster cluster;
  SqlConnection connection{SqlAddress(cluster.url())};
  for (const auto &[setting, limit] : {std::pair{"idle_in_transaction_session_timeout", "20s"},
                                       {"lock_timeout", "4s"},
                                       {"statement_timeout", "6s"}}) {
    std::string value;
    connection.session() << std::string("SHOW ") + setting, soci::into(value);
    EXPECT_EQ(value, limit) << setting;
  }
}

TEST(SqlStoreInPostgres, KeepsItsPasswordOutOfErrors) {
  try {
    const SqlStore store(SqlAddress("postgresql://me:secret@/nowhere?host=/nonexistent"));
    FAIL() << "there is no such database";
  } catch (const std::runtime_error &error) {
    const std::string text = error.what();
    EXPECT_TRUE(text.starts_with("the store postgresql:///nowhere?host=/nonexistent can't be"));
    EXPECT_EQ(text.find("secret"), std::string::npos);
  }
}

TEST(SqlStoreInSqlite, LoadsNothingWhenAnythingFails) {
  const TemporaryFolder folder;
  const std::string file = folder.path("store.sqlite");
  SqlStore store{SqlAddress(file)};
  store.load({{withDelivery("D1", "A")}, {}});
  SQLite::Database(file, SQLite::OPEN_READWRITE)
      .exec(
          "CREATE TRIGGER refuse BEFORE INSERT ON order_line WHEN NEW.item = 'B' "
          "BEGIN SELECT raise(ABORT, 'refused'); END");
  EXPECT_THROW(store.load({{withDelivery("D0", "C"), withDelivery("D1", "B")}, {}}),
               std::runtime_error);
  EXPECT_TRUE(store.delivery("D0").lines.empty());
  EXPECT_EQ(store.delivery("D1").lines, std::vector{withDelivery("D1", "A")});
}

TEST(SqlStoreInSqlite, KeepsWhatIsInMemoryAfterAFailure) {
  SqlStore store{SqlAddress(SqlAddress::kInMemory)};
  store.load({{withDelivery("D1", "A")}, {}});
  // A pattern that is longer than SQLite takes.
  EXPECT_THROW(store.summaries(std::string(60'000, 'x')), std::runtime_error);
  EXPECT_EQ(store.delivery("D1").lines.size(), 1U);
}

TEST(SqlStoreInSqlite, MigratesAFileOfTheFirstVersion) {
  const TemporaryFolder folder;
  const std::string file = folder.path("store.sqlite");
  SQLite::Database(file, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
      .exec(
          "CREATE TABLE picked_line (delivery TEXT NOT NULL, order_no TEXT NOT NULL, "
          "box TEXT NOT NULL, item TEXT NOT NULL, barcode TEXT NOT NULL, "
          "quantity INTEGER NOT NULL, picked_at TEXT NOT NULL, PRIMARY KEY (delivery, order_no, "
          "box, item, barcode, quantity, picked_at)) STRICT, WITHOUT ROWID; "
          "INSERT INTO picked_line VALUES ('D1', 'SO-1', 'C001', '20138A', '5012746100000', 1, "
          "'2026-02-28 23:59:59')");
  SqlStore store{SqlAddress(file)};
  store.store({pickReport()});
  EXPECT_EQ(store.picked({}), (std::vector{ReceivedReport{pickReport(), "", 0, false}}));
}

TEST(SqlStoreInSqlite, RefusesAFileThatIsNoStore) {
  const TemporaryFolder folder;
  const auto file = folder.write("sent.sqlite", std::string(4096, 'x'));
  try {
    const SqlStore store{SqlAddress(file)};
    FAIL() << "the file was taken for a store";
  } catch (const std::runtime_error &error) {
    EXPECT_EQ(std::string(error.what()).find("the store " + file + " can't be used: "), 0U);
    EXPECT_NE(std::string(error.what()).find("file is not a database"), std::string::npos);
  }
}

}  // namespace cartonpick::orders
