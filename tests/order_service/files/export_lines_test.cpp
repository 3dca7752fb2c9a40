#include "files/export_lines.h"

#include "sample_data.h"

#include <gtest/gtest.h>
#include <sstream>

namespace cartonpick::orders {

namespace {

/// The record, without the header, of a line whose item is `item`.
std::string csvOf(const std::string &item) {
  PickReport line = pickReport();
  line.item = item;
  std::ostringstream out;
  writeCsv({{.report = line, .receivedAt = "2026-03-04 09:15:01"}}, out);
  return out.str().substr(out.str().find("\r\n") + 2);
}

std::string csvWith(const std::string &field) {
  return "D1,SO-1,C001," + field + ",5012746100000,1,2026-02-28 23:59:59,2026-03-04 09:15:01\r\n";
}

}  // namespace

TEST(ExportLines, QuoteTextsWithSeparators) {
  EXPECT_EQ(csvOf("20138A"), csvWith("20138A"));
  EXPECT_EQ(csvOf("a,b"), csvWith("\"a,b\""));
  EXPECT_EQ(csvOf("a\"b"), csvWith("\"a\"\"b\""));
  EXPECT_EQ(csvOf("a\r\nb"), csvWith("\"a\r\nb\""));
}

TEST(ExportLines, LeaveCodesUnchanged) {
  for (const std::string code : {"=1+1", "-1", "+1", "@A1", "0047", " 1 ", "Ä", "'1"}) {
    EXPECT_EQ(csvOf(code), csvWith(code));
  }
}

TEST(ExportLines, KeepQuantitiesBelowZeroNumbers) {
  PickReport line = pickReport();
  line.quantity = -3;
  std::ostringstream out;
  writeCsv({{.report = line, .receivedAt = {}}}, out);
  EXPECT_NE(out.str().find(",-3,"), std::string::npos) << out.str();
}

TEST(ExportLines, LeaveEveryTextAsItIsInJson) {
  PickReport line = pickReport();
  line.item = "=1+1";
  std::ostringstream out;
  writeJson({{.report = line, .receivedAt = {}}}, out);
  EXPECT_EQ(nlohmann::json::parse(out.str()).at(0).at("item"), "=1+1");
}

}  // namespace cartonpick::orders
