#include "postgres_cluster.h"
#include "sample_data.h"
#include "store/sql_store.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

/// 3 pieces of the item are ordered.
OrderLine ordered(const std::string &delivery, const std::string &item,
                  const std::string &customer = "Ann") {
  OrderLine line = orderLine();
  line.delivery = delivery;
  line.article.item = item;
  line.customer = customer;
  return line;
}

PickReport picked(const std::string &delivery, const std::string &item, std::int32_t quantity) {
  PickReport line = pickReport();
  line.delivery = delivery;
  line.item = item;
  line.quantity = quantity;
  return line;
}

std::string numbersOf(const std::vector<DeliverySummary> &summaries) {
  std::string numbers;
  for (const DeliverySummary &summary : summaries) {
    numbers += summary.number + ' ';
  }
  return numbers;
}

}  // namespace

/// Every test is one for either database.
class DeliverySummaryTest : public testing::TestWithParam<SqlDialect> {
 protected:
  void load(const std::vector<OrderLine> &lines) { m_store.load({lines, {}}); }
  void send(const std::vector<PickReport> &lines) { m_store.store(lines); }
  std::vector<DeliverySummary> summaries(const std::string &search = {}) const {
    return m_store.summaries(search);
  }
  std::string found(const std::string &search) const { return numbersOf(summaries(search)); }
  void replace(const std::vector<OrderLine> &lines) { m_store.replace({lines, {}}); }

 private:
  TemporaryFolder m_folder;
  std::unique_ptr<PostgresCluster> m_cluster =
      GetParam() == SqlDialect::Postgres ? std::make_unique<PostgresCluster>() : nullptr;
  SqlStore m_store{SqlAddress(m_cluster ? m_cluster->url() : m_folder.path("store.sqlite"))};
};

INSTANTIATE_TEST_SUITE_P(Both, DeliverySummaryTest,
                         testing::Values(SqlDialect::Sqlite, SqlDialect::Postgres),
                         [](const testing::TestParamInfo<SqlDialect> &test) {
                           return test.param == SqlDialect::Sqlite ? "Sqlite" : "Postgres";
                         });

TEST_P(DeliverySummaryTest, CountsBoxesAndPieces) {
  OrderLine inAnotherBox = ordered("D1", "B", "Ann & <Söhne>");
  inAnotherBox.carton = "C002";
  inAnotherBox.quantity = 2'147'483'647;
  OrderLine first = ordered("D1", "A", "Ann & <Söhne>");
  load({first, inAnotherBox, inAnotherBox});
  const DeliverySummary summary = summaries().at(0);
  EXPECT_EQ(summary.number, "D1");
  EXPECT_EQ(summary.customer, "Ann & <Söhne>");
  EXPECT_EQ(summary.boxes, 2);
  EXPECT_EQ(summary.ordered, 4'294'967'297);
  EXPECT_EQ(summary.picked, 0);
  EXPECT_EQ(summary.sentAt, "");
  EXPECT_EQ(summary.state, DeliveryState::Open);
}

TEST_P(DeliverySummaryTest, CountsWhatWasReceivedLastOfALine) {
  load({ordered("D1", "A"), ordered("D1", "B")});
  send({picked("D1", "A", 9), picked("D1", "B", 3)});
  const std::string firstSentAt = summaries().at(0).sentAt;
  send({picked("D1", "A", 2)});
  const DeliverySummary summary = summaries().at(0);
  EXPECT_EQ(summary.picked, 5);
  EXPECT_NE(firstSentAt, "");
  EXPECT_GE(summary.sentAt, firstSentAt);
  EXPECT_EQ(summary.state, DeliveryState::Short);
}

TEST_P(DeliverySummaryTest, ReportsTheStateOfEachDelivery) {
  for (const std::string delivery : {"1", "2", "3", "4", "5", "6"}) {
    load({ordered(delivery, "A"), ordered(delivery, "B")});
  }
  send({picked("2", "A", 3), picked("2", "B", 3)});
  send({picked("3", "A", 3)});
  send({picked("4", "A", 3), picked("4", "B", 4)});
  send({picked("5", "A", 2), picked("5", "B", 4)});
  // What was not ordered is too much.
  send({picked("6", "A", 3), picked("6", "B", 3), picked("6", "X", 1)});
  std::map<std::string, DeliveryState> states;
  for (const DeliverySummary &summary : summaries()) {
    states[summary.number] = summary.state;
  }
  EXPECT_EQ(states, (std::map<std::string, DeliveryState>{{"1", DeliveryState::Open},
                                                          {"2", DeliveryState::Complete},
                                                          {"3", DeliveryState::Short},
                                                          {"4", DeliveryState::Over},
                                                          {"5", DeliveryState::ShortAndOver},
                                                          {"6", DeliveryState::Over}}));
}

TEST_P(DeliverySummaryTest, HasTheLatestChangeFirstAndElseTheSmallestNumber) {
  load({ordered("D3", "A"), ordered("D1", "A"), ordered("D2", "A")});
  EXPECT_EQ(numbersOf(summaries()), "D1 D2 D3 ");
  send({picked("D2", "A", 3)});
  EXPECT_EQ(numbersOf(summaries()), "D2 D1 D3 ");
}

TEST_P(DeliverySummaryTest, HasNoMoreThanAHundred) {
  std::vector<OrderLine> lines;
  for (int number = 1000; number <= 1100; ++number) {
    lines.push_back(ordered(std::to_string(number), "A"));
  }
  load(lines);
  const auto shown = summaries();
  EXPECT_EQ(shown.size(), 100U);
  EXPECT_EQ(shown.back().number, "1099");
  EXPECT_EQ(found("1100"), "1100 ");
}

TEST_P(DeliverySummaryTest, LeavesOutWhatIsNeitherOrderedNorSent) {
  load({ordered("D1", "A"), ordered("D2", "A")});
  send({picked("D2", "A", 3)});
  replace({ordered("D3", "A")});
  EXPECT_EQ(numbersOf(summaries()), "D3 D2 ");
  EXPECT_EQ(summaries().at(1).state, DeliveryState::Withdrawn);
}

TEST_P(DeliverySummaryTest, FindsTheBeginningOfANumberAndAnyPartOfACustomer) {
  load({ordered("47-a", "A", "Müller & Söhne"), ordered("147", "A", "ΑΦΟΙ Λαζάρη"),
        ordered("100%", "A", "O'Neill_2")});
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"47", "47-a "},    {"47-A", "47-a "},   {"7", ""},         {"mÜLLER", "47-a "},
      {"SÖHNE", "47-a "}, {"LLER &", "47-a "}, {"αφοι", "147 "},  {"λαζάρη", "147 "},
      {"o'n", "100% "},   {"_", "100% "},      {"100%", "100% "}, {"%", ""},
      {"!", ""},          {"\\", ""},          {"' OR 1=1", ""},  {":pattern0", ""},
  };
  for (const auto &[search, expected] : cases) {
    EXPECT_EQ(found(search), expected) << search;
  }
}

TEST_P(DeliverySummaryTest, IgnoresTheCaseOfAllLetters) {
  load({ordered("Äb-ÇD", "A", "McÉVoY Straße"), ordered("2", "A", "Ὀδυσσεύς ΣΊΣΥΦΟΣ"),
        ordered("3", "A", "ДОМ и сАД"), ordered("4", "A", "\nEnd\n")});
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"äB-çd", "Äb-ÇD "},  {"b-çd", ""},        {"mcévoy STRASSE", "Äb-ÇD "},
      {"STRAẞE", "Äb-ÇD "}, {"ὈΔΥΣΣΕΎΣ", "2 "},  {"σίσυφος", "2 "},
      {"σίσυφοσ", "2 "},    {"дОМ И Сад", "3 "}, {"END", "4 "},
      {"evoy", ""},
  };
  for (const auto &[search, expected] : cases) {
    EXPECT_EQ(found(search), expected) << search;
  }
}

TEST_P(DeliverySummaryTest, FindsADeliveryThatWasSentWithoutAnOrder) {
  send({picked("Ä1", "A", 3)});
  EXPECT_EQ(found("ä"), "Ä1 ");
}

}  // namespace cartonpick::orders
