#include "model/last_reports.h"

#include "sample_data.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

ReceivedReport report(const std::string &box, std::int32_t quantity,
                      const std::string &receivedAt) {
  ReceivedReport stored{.report = pickReport(), .receivedAt = receivedAt};
  stored.report.box = box;
  stored.report.quantity = quantity;
  return stored;
}

}  // namespace

TEST(LastReports, KeepsOfALineWhatWasReceivedLast) {
  const auto last =
      lastReports({report("C1", 2, "2026-03-04 10:00:00"), report("C2", 7, "2026-03-04 10:00:00"),
                   report("C1", 3, "2026-03-04 12:00:00"), report("C1", 4, "2026-03-04 11:00:00")});
  ASSERT_EQ(last.size(), 2U);
  EXPECT_EQ(last[0].report.quantity, 3);
  EXPECT_EQ(last[1].report.box, "C2");
  EXPECT_EQ(last[1].report.quantity, 7);
}

TEST(LastReports, AreNoneWhereNothingWasReported) {
  EXPECT_TRUE(lastReports({}).empty());
}

}  // namespace cartonpick::orders
