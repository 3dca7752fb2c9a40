#include "demo/demo_deliveries.h"

#include "demo/demo_catalogue.h"
#include "model/calendar.h"
#include "model/ean13.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace cartonpick::orders {

namespace {

using Lines = std::span<const OrderLine>;

const std::vector<std::string> kNumbers = {"4711", "4712", "4713", "4714",   "4715",
                                           "4716", "4717", "4718", "4719 2B"};

const Deliveries &demo() {
  static const Deliveries kDemo = demoDeliveries();
  return kDemo;
}

template <class Value>
std::set<Value> valuesOf(Lines lines, Value OrderLine::*member) {
  std::set<Value> values;
  for (const OrderLine &line : lines) {
    values.insert(line.*member);
  }
  return values;
}

std::size_t cartonsOf(const std::string &delivery) {
  return valuesOf(demo().lines(delivery), &OrderLine::carton).size();
}

/// How many lines there are of each item in each carton.
std::map<std::pair<std::string, std::string>, int> timesInCarton(Lines lines) {
  std::map<std::pair<std::string, std::string>, int> times;
  for (const OrderLine &line : lines) {
    ++times[{line.article.item, line.carton}];
  }
  return times;
}

std::map<std::string, int> linesPerCarton(Lines lines) {
  std::map<std::string, int> count;
  for (const OrderLine &line : lines) {
    ++count[line.carton];
  }
  return count;
}

bool isAscii(const std::string &text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0; });
}

bool isComplete(const OrderLine &line) {
  return isDate(line.orderDate) && isDate(line.shippingDate) && line.carton.size() == 4 &&
         !line.customer.empty() && !line.brand.empty() && !line.order.empty();
}

bool isOrderedZero(const OrderLine &line) {
  return line.quantity == 0;
}

}  // namespace

TEST(DemoDeliveries, HaveBarcodesWithTheRightCheckDigit) {
  for (const Article &article : demo().catalogue()) {
    ASSERT_EQ(article.barcode.size(), 13U) << article.barcode;
    EXPECT_EQ(article.barcode, ean13(article.barcode.substr(0, 12)));
  }
}

TEST(DemoDeliveries, HaveACatalogueWithoutTwoArticlesOfOneCode) {
  std::set<std::string> barcodes;
  std::set<std::string> items;
  std::set<std::string> descriptions;
  for (const Article &article : demo().catalogue()) {
    barcodes.insert(article.barcode);
    items.insert(article.item);
    descriptions.insert(article.description);
  }
  EXPECT_EQ(demo().catalogue().size(), 632U);
  EXPECT_EQ(barcodes.size(), 632U);
  EXPECT_EQ(items.size(), 632U);
  EXPECT_EQ(descriptions.size(), 632U);
}

TEST(DemoDeliveries, HaveACatalogueWithEveryArticleOfTheirs) {
  const auto &catalogue = demo().catalogue();
  const std::set<Article> known(catalogue.begin(), catalogue.end());
  for (const std::string &number : kNumbers) {
    for (const OrderLine &line : demo().lines(number)) {
      EXPECT_TRUE(known.contains(line.article)) << line.article.item;
    }
  }
  EXPECT_EQ(catalogue.size(), demoCatalogue().size());
}

TEST(DemoDeliveries, HaveACatalogueWithArticlesThatAreNotOrdered) {
  std::set<Article> ordered;
  for (const std::string &number : kNumbers) {
    for (const OrderLine &line : demo().lines(number)) {
      ordered.insert(line.article);
    }
  }
  EXPECT_LT(ordered.size(), demo().catalogue().size());
}

TEST(DemoDeliveries, HaveRealDatesAndNoEmptyMember) {
  for (const std::string &number : kNumbers) {
    for (const OrderLine &line : demo().lines(number)) {
      EXPECT_PRED1(isComplete, line) << number;
    }
  }
}

TEST(DemoDeliveries, HaveOneToLearnOn) {
  EXPECT_EQ(demo().lines("4711").size(), 12U);
  EXPECT_EQ(cartonsOf("4711"), 3U);
}

TEST(DemoDeliveries, HaveOneOfFortyCartons) {
  EXPECT_EQ(demo().lines("4712").size(), 600U);
  EXPECT_EQ(cartonsOf("4712"), 40U);
}

TEST(DemoDeliveries, HaveOneWithAnItemInEveryCarton) {
  std::map<std::string, int> cartonsOfItem;
  for (const auto &[itemAndCarton, times] : timesInCarton(demo().lines("4713"))) {
    ++cartonsOfItem[itemAndCarton.first];
  }
  EXPECT_TRUE(std::any_of(cartonsOfItem.begin(), cartonsOfItem.end(),
                          [](const auto &item) { return item.second == 4; }));
}

TEST(DemoDeliveries, HaveOneWithAnItemTwiceInACarton) {
  const auto times = timesInCarton(demo().lines("4714"));
  EXPECT_TRUE(
      std::any_of(times.begin(), times.end(), [](const auto &entry) { return entry.second == 2; }));
}

TEST(DemoDeliveries, HaveOneOfASingleLine) {
  EXPECT_EQ(demo().lines("4715").size(), 1U);
}

TEST(DemoDeliveries, HaveOneOfLongDescriptionsBeyondAscii) {
  for (const OrderLine &line : demo().lines("4716")) {
    EXPECT_FALSE(isAscii(line.customer));
    EXPECT_FALSE(isAscii(line.article.description)) << line.article.description;
    EXPECT_GT(line.article.description.size(), 80U);
  }
}

TEST(DemoDeliveries, HaveOneOfSeveralDates) {
  const Lines lines = demo().lines("4717");
  EXPECT_EQ(valuesOf(lines, &OrderLine::orderDate).size(), 2U);
  EXPECT_EQ(valuesOf(lines, &OrderLine::shippingDate).size(), 2U);
}

TEST(DemoDeliveries, HaveOneWithACrowdedCartonAndALineOrderedZeroTimes) {
  const Lines lines = demo().lines("4718");
  EXPECT_EQ(linesPerCarton(lines)["C001"], 10);
  EXPECT_EQ(std::count_if(lines.begin(), lines.end(), isOrderedZero), 1);
}

TEST(DemoDeliveries, HaveOneWhoseNumberNeedsEncoding) {
  EXPECT_EQ(demo().lines("4719 2B").size(), 6U);
}

TEST(DemoDeliveries, AreAlwaysTheSame) {
  const Deliveries again = demoDeliveries();
  EXPECT_EQ(again.catalogue(), demo().catalogue());
  for (const std::string &number : kNumbers) {
    EXPECT_TRUE(std::ranges::equal(again.lines(number), demo().lines(number)));
  }
}

}  // namespace cartonpick::orders
