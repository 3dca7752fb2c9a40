// The versions of the store's schema.

#include "store/sql_schema.h"

#include "either_store.h"
#include "sample_data.h"
#include "store/delivery_search.h"
#include "store/sql_connection.h"
#include "store/sql_store.h"
#include "store/sql_words.h"
#include "store/store_error.h"

#include <array>

namespace cartonpick::orders {

namespace {

/// What the last program without a version of the schema made.
constexpr std::array kUnnumberedTables = {
    "CREATE TABLE delivery (number {text}, customer {text}, changed_at {text}, "
    "PRIMARY KEY (number)) {tableOfItsKey}",
    "CREATE INDEX delivery_by_change ON delivery (changed_at DESC, number, customer)",
    "CREATE TABLE order_line (delivery {text}, position INTEGER NOT NULL, order_no {text}, "
    "customer {text}, brand {text}, order_date {text}, shipping_date {text}, box {text}, "
    "item {text}, barcode {text}, description {text}, quantity INTEGER NOT NULL, "
    "PRIMARY KEY (delivery, position)) {tableOfItsKey}",
    "CREATE TABLE article (position {counter}, barcode {text}, item {text}, description {text})",
    "CREATE UNIQUE INDEX article_identity ON article (item, barcode, description)",
    "CREATE TABLE picked_line (delivery {text}, order_no {text}, box {text}, item {text}, "
    "barcode {text}, quantity INTEGER NOT NULL, picked_at {text}, received_at {text} DEFAULT '', "
    "PRIMARY KEY (delivery, order_no, box, item, barcode, quantity, picked_at)) {tableOfItsKey}"};

/// What that program runs for a delivery and for a report.
constexpr auto kUnnumberedDelivery =
    "INSERT INTO delivery (number, customer, changed_at) VALUES ('D1', 'Ann', "
    "'2026-02-28 10:00:00.000000') ON CONFLICT (number) DO UPDATE SET "
    "customer = excluded.customer, changed_at = excluded.changed_at";
constexpr auto kUnnumberedReport =
    "INSERT INTO picked_line (delivery, order_no, box, item, barcode, quantity, picked_at, "
    "received_at) VALUES ('D1', 'SO-1', 'C001', '20138A', '5012746100000', :quantity, "
    "'2026-02-28 23:59:59', '2026-02-28 11:00:00.000000') ON CONFLICT DO NOTHING";

PickReport withQuantity(std::int32_t quantity) {
  PickReport line = pickReport();
  line.quantity = quantity;
  return line;
}

}  // namespace

class SqlSchemaTest : public EitherStoreTest {
 protected:
  void run(const std::string &statement) {
    SqlConnection connection(address());
    connection.session() << sqlOf(statement, GetParam());
  }
  void report(int quantity) {
    SqlConnection connection(address());
    connection.session() << kUnnumberedReport, soci::use(quantity);
  }
  bool hasOutdated() {
    SqlConnection connection(address());
    return hasOutdatedSearchTexts(connection.session());
  }
  std::string errorOfOpening() {
    try {
      const SqlStore store(address());
      return "none";
    } catch (const StoreError &error) {
      return error.what();
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Both, SqlSchemaTest, bothDialects(), dialectName);

TEST_P(SqlSchemaTest, MigratesAStoreWithoutAVersion) {
  for (const char *table : kUnnumberedTables) {
    run(table);
  }
  run(kUnnumberedDelivery);
  report(4);
  SqlStore store(address());
  ASSERT_EQ(store.picked({}).size(), 1U);
  EXPECT_EQ(store.picked({}).front().report, withQuantity(4));
  EXPECT_FALSE(store.picked({}).front().isUndone);
  store.store({withQuantity(5)});
  EXPECT_EQ(store.summaries("").size(), 1U);
  EXPECT_EQ(SqlStore(address()).picked({}).size(), 2U);
}

TEST_P(SqlSchemaTest, AllowsTheProgramBeforeToUseTheStore) {
  SqlStore store(address());
  store.load(sampleDeliveries());
  run(kUnnumberedDelivery);
  report(4);
  EXPECT_TRUE(store.delivery("D1").isSent);
  store.store({withQuantity(5)});
  report(6);
  EXPECT_EQ(store.picked({}).size(), 3U);
  EXPECT_EQ(store.summaries("D1").at(0).picked, 5);
}

TEST_P(SqlSchemaTest, FindsWhatTheProgramBeforeChanged) {
  SqlStore store(address());
  OrderLine line = orderLine();
  line.delivery = "D1";
  line.customer = "Björn";
  store.load({{line}, {}});
  EXPECT_EQ(store.summaries("BJÖRN").size(), 1U);
  run(kUnnumberedDelivery);
  EXPECT_EQ(store.summaries("ANN").size(), 1U);
  EXPECT_EQ(store.summaries("BJÖRN").size(), 0U);
}

TEST_P(SqlSchemaTest, UpdatesTheSearchTextsOfAllDeliveries) {
  static_cast<void>(SqlStore(address()));
  run("INSERT INTO delivery (number, customer, changed_at) "
      "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2001) "
      "SELECT 'N' || i, 'Änn', '' FROM n");
  EXPECT_TRUE(hasOutdated());
  SqlStore(address()).updateSearch();
  EXPECT_FALSE(hasOutdated());
}

TEST_P(SqlSchemaTest, IsRefusedIfANewerProgramMadeItUnusable) {
  static_cast<void>(SqlStore(address()));
  run("UPDATE schema_version SET version = 9, oldest_program = 9");
  const std::string error = errorOfOpening();
  EXPECT_TRUE(
      error.ends_with("can't be used: it has version 9, and this program knows versions up "
                      "to " +
                      std::to_string(kSchemaVersion)))
      << error;
  run("UPDATE schema_version SET oldest_program = " + std::to_string(kSchemaVersion));
  EXPECT_EQ(errorOfOpening(), "none");
}

}  // namespace cartonpick::orders
