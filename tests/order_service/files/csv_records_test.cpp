#include "files/csv_records.h"

#include "sample_data.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

using Fields = std::vector<std::string>;

TEST(CsvRecords, SplitsLinesIntoFields) {
  const auto records = readCsvRecords("a,b\r\nc,\n");
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[0].fields, (Fields{"a", "b"}));
  EXPECT_EQ(records[1].fields, (Fields{"c", ""}));
}

TEST(CsvRecords, NeedNoLineEndAfterTheLast) {
  const auto records = readCsvRecords("a,b\nc,d");
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[1].fields, (Fields{"c", "d"}));
}

TEST(CsvRecords, TakeCommasQuotesAndLineEndsFromQuotedFields) {
  const auto records = readCsvRecords("\"a,\"\"b\"\"\",\"c\nd\"\n");
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].fields, (Fields{"a,\"b\"", "c\nd"}));
}

TEST(CsvRecords, KeepBlanksAroundFields) {
  EXPECT_EQ(readCsvRecords(" a , b\t\n").at(0).fields, (Fields{" a ", " b\t"}));
}

TEST(CsvRecords, KnowTheLineOnWhichTheyStart) {
  const auto records = readCsvRecords("a\n\n\"b\n\nc\"\r\nd\n");
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[0].line, 1U);
  EXPECT_EQ(records[1].line, 3U);
  EXPECT_EQ(records[2].line, 6U);
}

TEST(CsvRecords, EndWithALineThatEndsWithACarriageReturnAlone) {
  const auto records = readCsvRecords("a\rb\r\"c\rd\"\re");
  ASSERT_EQ(records.size(), 4U);
  EXPECT_EQ(records[1].line, 2U);
  EXPECT_EQ(records[2].line, 3U);
  EXPECT_EQ(records[2].fields, std::vector<std::string>{"c\rd"});
  EXPECT_EQ(records[3].line, 5U);
  EXPECT_EQ(errorOf([] { readCsvRecords("a\r\"b"); }), "line 2: a quoted field has no end");
}

TEST(CsvRecords, AreNoneInAnEmptyText) {
  EXPECT_TRUE(readCsvRecords("").empty());
  EXPECT_TRUE(readCsvRecords("\n\r\n").empty());
}

TEST(CsvRecords, RefuseAQuoteInTheWrongPlace) {
  EXPECT_EQ(errorOf([] { readCsvRecords("a\nb\"c\n"); }), "line 2: a quote is in the wrong place");
  EXPECT_EQ(errorOf([] { readCsvRecords("\"a\"b\n"); }), "line 1: a quote is in the wrong place");
}

TEST(CsvRecords, RefuseAQuotedFieldWithoutEnd) {
  EXPECT_EQ(errorOf([] { readCsvRecords("a\n\"b\nc\n"); }), "line 2: a quoted field has no end");
}

}  // namespace cartonpick::orders
