#include "sqlite_sent_pickings.h"

#include "sample_data.h"
#include "stored_lines.h"
#include "temporary_folder.h"

#include <array>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

namespace cartonpick::orders {

namespace {

PickedLine withQuantity(std::int32_t quantity) {
  PickedLine line = pickedLine();
  line.quantity = quantity;
  return line;
}

}  // namespace

TEST(SqliteSentPickings, KnowWhichDeliveriesWereSent) {
  SqliteSentPickings sent(SqliteSentPickings::kInMemory);
  EXPECT_FALSE(sent.isSent("D1"));
  sent.store({pickedLine()});
  EXPECT_TRUE(sent.isSent("D1"));
  EXPECT_FALSE(sent.isSent("D1 "));
  EXPECT_FALSE(sent.isSent("d1"));
}

TEST(SqliteSentPickings, StoreAFactOnce) {
  const TemporaryFolder folder;
  const auto file = folder.path("sent.sqlite");
  SqliteSentPickings sent(file);
  sent.store({withQuantity(1), withQuantity(2)});
  sent.store({withQuantity(2), withQuantity(1)});
  EXPECT_EQ(storedLines(file), 2);
}

TEST(SqliteSentPickings, KeepALaterDifferentQuantityAsWell) {
  const TemporaryFolder folder;
  const auto file = folder.path("sent.sqlite");
  SqliteSentPickings sent(file);
  sent.store({withQuantity(1)});
  sent.store({withQuantity(5)});
  EXPECT_EQ(storedLines(file), 2);
}

TEST(SqliteSentPickings, TellFactsApartByEveryMember) {
  const TemporaryFolder folder;
  const auto file = folder.path("sent.sqlite");
  SqliteSentPickings sent(file);
  sent.store({pickedLine()});
  for (const auto member : {&PickedLine::delivery, &PickedLine::order, &PickedLine::box,
                            &PickedLine::item, &PickedLine::barcode, &PickedLine::pickedAt}) {
    PickedLine other = pickedLine();
    (other.*member) += '\0';
    sent.store({other});
  }
  EXPECT_EQ(storedLines(file), 7);
}

TEST(SqliteSentPickings, SurviveInTheirFile) {
  const TemporaryFolder folder;
  const auto file = folder.path("sent.sqlite");
  SqliteSentPickings(file).store({pickedLine()});
  EXPECT_TRUE(SqliteSentPickings(file).isSent("D1"));
}

TEST(SqliteSentPickings, MayBeStoredByManyThreadsAndConnections) {
  const TemporaryFolder folder;
  const auto file = folder.path("sent.sqlite");
  SqliteSentPickings one(file);
  SqliteSentPickings other(file);
  {
    std::array<std::jthread, 8> threads;
    for (std::int32_t i = 0; std::jthread & thread : threads) {
      thread = std::jthread([&sent = i % 2 == 0 ? one : other, i] {
        sent.store({withQuantity(0), withQuantity(1 + i / 2)});
      });
      ++i;
    }
  }
  EXPECT_EQ(storedLines(file), 5);
}

TEST(SqliteSentPickings, RefuseAFileThatIsNoStore) {
  const TemporaryFolder folder;
  const auto file = folder.write("sent.sqlite", std::string(4096, 'x'));
  try {
    const SqliteSentPickings sent(file);
    FAIL() << "the file was taken for a store";
  } catch (const std::runtime_error &error) {
    EXPECT_EQ(error.what(), "the store " + file + " can't be used: file is not a database");
  }
}

}  // namespace cartonpick::orders
