#include "model/picked_delivery.h"

#include "sample_data.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

/// 3 pieces of the item are ordered.
OrderLine ordered(const std::string &item, const std::string &box = "C001") {
  OrderLine line = orderLine();
  line.article.item = item;
  line.carton = box;
  return line;
}

ReceivedReport fact(const std::string &item, std::int32_t quantity,
                    const std::string &receivedAt = "2026-03-01 08:00:00.000000",
                    const std::string &pickedAt = "2026-03-01 07:00:00") {
  PickReport line = pickReport();
  line.item = item;
  line.quantity = quantity;
  line.pickedAt = pickedAt;
  return {line, receivedAt};
}

DeliveryState stateWith(const std::vector<ReceivedReport> &facts) {
  return pickedDelivery({ordered("A"), ordered("B")}, facts).state;
}

}  // namespace

TEST(PickedDelivery, HasBoxesAndLinesInTheirGivenOrder) {
  const auto delivery =
      pickedDelivery({ordered("B", "C2"), ordered("A", "C1"), ordered("C", "C2")}, {});
  ASSERT_EQ(delivery.boxes.size(), 2U);
  EXPECT_EQ(delivery.boxes[0].name, "C2");
  ASSERT_EQ(delivery.boxes[0].lines.size(), 2U);
  EXPECT_EQ(delivery.boxes[0].lines[0].article.item, "B");
  EXPECT_EQ(delivery.boxes[0].lines[1].article.item, "C");
  EXPECT_EQ(delivery.boxes[1].name, "C1");
}

TEST(PickedDelivery, AddsUpLinesThatATabletCantTellApart) {
  const auto delivery = pickedDelivery({ordered("A"), ordered("A")}, {fact("A", 6)});
  ASSERT_EQ(delivery.boxes.at(0).lines.size(), 1U);
  EXPECT_EQ(delivery.boxes[0].lines[0].ordered, 6);
  EXPECT_EQ(delivery.state, DeliveryState::Complete);
}

TEST(PickedDelivery, CountsTheQuantityThatWasReceivedLast) {
  const auto delivery = pickedDelivery(
      {ordered("A")}, {fact("A", 1, "3"), fact("A", 7, "2", "9"), fact("A", 5, "2", "1")});
  const LineFulfilment &line = delivery.boxes.at(0).lines.at(0);
  EXPECT_EQ(line.reports, (std::vector{5, 7, 1}));
  EXPECT_EQ(line.picked(), 1);
  EXPECT_EQ(line.difference(), -2);
}

TEST(PickedDelivery, HasWhatWasPickedWithoutAnOrderAfterTheRest) {
  const auto delivery = pickedDelivery({ordered("A"), ordered("B", "C002")}, {fact("X", 2)});
  ASSERT_EQ(delivery.boxes.at(0).lines.size(), 2U);
  const LineFulfilment &line = delivery.boxes[0].lines[1];
  EXPECT_FALSE(line.isOrdered);
  EXPECT_EQ(line.difference(), 2);
}

TEST(PickedDelivery, WasSentWhenTheLatestLineWasReceived) {
  EXPECT_EQ(pickedDelivery({ordered("A")}, {fact("A", 1, "5"), fact("A", 2, "4")}).sentAt, "5");
  EXPECT_EQ(pickedDelivery({ordered("A")}, {}).sentAt, "");
}

TEST(PickedDelivery, HasTheStateOfAllItsLines) {
  EXPECT_EQ(stateWith({}), DeliveryState::Open);
  EXPECT_EQ(stateWith({fact("A", 3), fact("B", 3)}), DeliveryState::Complete);
  EXPECT_EQ(stateWith({fact("A", 3)}), DeliveryState::Short);
  EXPECT_EQ(stateWith({fact("A", 3), fact("B", 4)}), DeliveryState::Over);
  EXPECT_EQ(stateWith({fact("A", 2), fact("B", 4)}), DeliveryState::ShortAndOver);
  EXPECT_EQ(pickedDelivery({}, {fact("A", 3)}).state, DeliveryState::Withdrawn);
}

}  // namespace cartonpick::orders
