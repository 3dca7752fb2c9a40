#include "model/calendar.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

TEST(Calendar, KnowsDaysOfTheCalendar) {
  EXPECT_TRUE(isDate("01/31/2026"));
  EXPECT_TRUE(isDate("02/29/2024"));
  EXPECT_TRUE(isDate("12/31/9999"));
}

TEST(Calendar, RefusesDaysThatNoCalendarHas) {
  EXPECT_FALSE(isDate("02/29/2026"));
  EXPECT_FALSE(isDate("13/01/2026"));
  EXPECT_FALSE(isDate("00/10/2026"));
  EXPECT_FALSE(isDate("04/31/2026"));
  EXPECT_FALSE(isDate("01/01/0000"));
}

TEST(Calendar, RefusesDatesInAnotherForm) {
  EXPECT_FALSE(isDate(""));
  EXPECT_FALSE(isDate("1/31/2026"));
  EXPECT_FALSE(isDate("01-31-2026"));
  EXPECT_FALSE(isDate("01/31/2026 "));
  EXPECT_FALSE(isDate("01/31/20a6"));
  EXPECT_FALSE(isDate("2026-01-31"));
}

TEST(Calendar, KnowsTimesOfTheCalendar) {
  EXPECT_TRUE(isDateTime("2026-01-31 00:00:00"));
  EXPECT_TRUE(isDateTime("2024-02-29 23:59:59"));
}

TEST(Calendar, RefusesTimesThatNoClockShows) {
  EXPECT_FALSE(isDateTime("2026-01-31 24:00:00"));
  EXPECT_FALSE(isDateTime("2026-01-31 23:60:00"));
  EXPECT_FALSE(isDateTime("2026-01-31 23:59:60"));
  EXPECT_FALSE(isDateTime("2026-02-30 12:00:00"));
}

TEST(Calendar, RefusesTimesInAnotherForm) {
  EXPECT_FALSE(isDateTime("2026-01-31T12:00:00"));
  EXPECT_FALSE(isDateTime("2026-01-31 12:00"));
  EXPECT_FALSE(isDateTime("2026-01-31 12:00:00Z"));
  EXPECT_FALSE(isDateTime("2026-01-31  2:00:00"));
}

TEST(Calendar, WritesADateAsIso8601Does) {
  EXPECT_EQ(isoDate("03/05/2026"), "2026-03-05");
  EXPECT_EQ(isoDate("soon"), "soon");
}

}  // namespace cartonpick::orders
