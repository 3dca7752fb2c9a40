// The order of reports, and what undoes them.

#include "store/delivery_events.h"

#include "either_store.h"
#include "model/last_reports.h"
#include "sample_data.h"
#include "store/sql_connection.h"
#include "store/sql_store.h"

namespace cartonpick::orders {

namespace {

PickReport reported(std::int32_t quantity, const std::string &pickedAt = "2026-02-28 23:59:59") {
  PickReport line = pickReport();
  line.quantity = quantity;
  line.pickedAt = pickedAt;
  return line;
}

}  // namespace

class DeliveryEventsTest : public EitherStoreTest {
 protected:
  DeliveryEventsTest() { m_store.load(sampleDeliveries()); }

  SqlStore &store() { return m_store; }
  DeliverySummary summary() const { return m_store.summaries("D1").at(0); }
  std::vector<int> counting() const {
    std::vector<int> quantities;
    for (const ReceivedReport &report : lastReports(m_store.picked({.delivery = "D1"}))) {
      quantities.push_back(report.report.quantity);
    }
    return quantities;
  }
  /// Has the clock go back to before the last event of the delivery.
  void setBackTheClock() {
    SqlConnection connection(address());
    connection.session() << "UPDATE delivery SET changed_at = '2999-01-01 00:00:00.000000'";
  }

 private:
  SqlStore m_store{address()};
};

INSTANTIATE_TEST_SUITE_P(Both, DeliveryEventsTest, bothDialects(), dialectName);

TEST_P(DeliveryEventsTest, TheReportThatWasStoredLastCountsThoughTheClockWentBack) {
  setBackTheClock();
  store().store({reported(1, "2026-03-01 12:00:00")});
  store().store({reported(2, "2026-03-01 11:00:00")});
  EXPECT_EQ(counting(), std::vector{2});
  EXPECT_EQ(summary().picked, 2);
  store().store({reported(3, "2026-03-01 10:00:00")});
  EXPECT_EQ(counting(), std::vector{3});
  EXPECT_EQ(summary().picked, 3);
}

TEST_P(DeliveryEventsTest, ADeliveryThatIsReopenedIsOpen) {
  store().store({reported(1)});
  EXPECT_EQ(summary().state, DeliveryState::Short);
  EXPECT_TRUE(store().reopen("D1"));
  EXPECT_FALSE(store().delivery("D1").isSent);
  EXPECT_EQ(summary().state, DeliveryState::Open);
  EXPECT_EQ(summary().picked, 0);
  EXPECT_EQ(summary().sentAt, "");
}

TEST_P(DeliveryEventsTest, AReopeningKeepsWhatItUndoesAndItsOwnTime) {
  store().store({reported(1)});
  EXPECT_TRUE(store().reopenings("D1").empty());
  store().reopen("D1");
  const auto facts = store().picked({.delivery = "D1"});
  ASSERT_EQ(facts.size(), 1U);
  EXPECT_TRUE(facts.front().isUndone);
  EXPECT_TRUE(counting().empty());
  ASSERT_EQ(store().reopenings("D1").size(), 1U);
  EXPECT_GE(store().reopenings("D1").front(), facts.front().receivedAt);
}

TEST_P(DeliveryEventsTest, AReportAfterAReopeningCounts) {
  setBackTheClock();
  store().store({reported(1)});
  store().reopen("D1");
  store().store({reported(2)});
  EXPECT_TRUE(store().delivery("D1").isSent);
  EXPECT_EQ(counting(), std::vector{2});
  EXPECT_EQ(summary().picked, 2);
  EXPECT_TRUE(store().reopen("D1"));
  EXPECT_FALSE(store().delivery("D1").isSent);
  EXPECT_EQ(store().reopenings("D1").size(), 2U);
}

TEST_P(DeliveryEventsTest, AnUndoneReportThatIsSentAgainCounts) {
  store().store({reported(1)});
  store().reopen("D1");
  store().store({reported(1)});
  EXPECT_TRUE(store().delivery("D1").isSent);
  EXPECT_EQ(counting(), std::vector{1});
  EXPECT_EQ(store().picked({}).size(), 1U);
}

TEST_P(DeliveryEventsTest, OnlyADeliveryThatWasSentIsReopened) {
  for (const std::string number : {"D1", "nowhere", ""}) {
    EXPECT_FALSE(store().reopen(number)) << number;
    EXPECT_TRUE(store().reopenings(number).empty()) << number;
  }
  EXPECT_EQ(store().summaries("").size(), 2U);
}

TEST_P(DeliveryEventsTest, AReopeningLeavesOtherDeliveriesAlone) {
  PickReport other = reported(1);
  other.delivery = "D 2/ß";
  store().store({reported(1)});
  store().store({other});
  store().reopen("D1");
  EXPECT_TRUE(store().delivery("D 2/ß").isSent);
}

TEST_P(DeliveryEventsTest, ArticlesThatAreNotInTheCatalogueAreUnknown) {
  PickReport unknown = reported(1);
  unknown.item = "X";
  store().store({reported(1), unknown});
  const auto articles = store().unknownArticles("D1");
  ASSERT_EQ(articles.size(), 1U);
  EXPECT_EQ(articles.front().item, "X");
  EXPECT_EQ(articles.front().barcode, unknown.barcode);
}

}  // namespace cartonpick::orders
