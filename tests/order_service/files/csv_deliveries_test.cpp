#include "files/csv_deliveries.h"

#include "sample_data.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

const std::string kHeader = "doc,ordernum,cusname,brand,cdate,date,carton,item,barcode,descr,qty\n";
const std::string kMug =
    "D1,SO-1,Ann & Söhne,HEARTHSIDE,01/31/2026,02/28/2026,C001,20138A,5012746100000,WHITE ENAMEL "
    "MUG,3\n";

std::string errorIn(const std::string &text) {
  return errorOf([&] { deliveriesFromCsv(text); });
}

std::string replaced(std::string text, const std::string &what, const std::string &with) {
  return text.replace(text.find(what), what.size(), with);
}

}  // namespace

TEST(CsvDeliveries, HaveALinePerRecord) {
  const Deliveries deliveries = deliveriesFromCsv(kHeader + kMug + kMug);
  const auto lines = deliveries.lines("D1");
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], sampleDeliveries().lines("D1")[0]);
}

TEST(CsvDeliveries, HaveACatalogueOfTheirArticles) {
  const Deliveries deliveries = deliveriesFromCsv(kHeader + kMug + kMug);
  ASSERT_EQ(deliveries.catalogue().size(), 1U);
  EXPECT_EQ(deliveries.catalogue()[0].item, "20138A");
}

TEST(CsvDeliveries, MayHaveTheirColumnsInAnyOrder) {
  const Deliveries deliveries = deliveriesFromCsv(
      "qty,doc,ordernum,cusname,brand,cdate,date,carton,item,barcode,descr\n"
      "7,D9,SO,A,B,01/31/2026,02/28/2026,C,I,E,\"one, \"\"two\"\"\"\n");
  EXPECT_EQ(deliveries.lines("D9")[0].quantity, 7);
  EXPECT_EQ(deliveries.lines("D9")[0].article.description, "one, \"two\"");
}

TEST(CsvDeliveries, MayStartWithAByteOrderMark) {
  EXPECT_EQ(deliveriesFromCsv("\xEF\xBB\xBF" + kHeader + kMug).lines("D1").size(), 1U);
}

TEST(CsvDeliveries, KeepNumbersThatAreTextAsTheyAre) {
  const auto deliveries = deliveriesFromCsv(kHeader + replaced(kMug, "D1", "0047"));
  EXPECT_EQ(deliveries.lines("0047").size(), 1U);
}

TEST(CsvDeliveries, NeedTheRightHeader) {
  EXPECT_EQ(errorIn(""), "the header line is missing");
  EXPECT_EQ(errorIn(replaced(kHeader, ",qty", "")), "line 1: column \"qty\" is missing");
  EXPECT_EQ(errorIn(replaced(kHeader, "qty", "qty,colour")),
            "line 1: column \"colour\" is unknown");
  EXPECT_EQ(errorIn(replaced(kHeader, "qty", "qty,doc")), "line 1: column \"doc\" is there twice");
}

TEST(CsvDeliveries, NameTheLineOfABadRecord) {
  const std::string start = kHeader + kMug;
  EXPECT_EQ(errorIn(start + "D1,SO-1\n"), "line 3: 2 fields instead of 11");
  EXPECT_EQ(errorIn(start + replaced(kMug, ",3", ",three")),
            "line 3: \"qty\" is not an integer number");
  EXPECT_EQ(errorIn(start + replaced(kMug, ",3", ",")), "line 3: \"qty\" is not an integer number");
  EXPECT_EQ(errorIn(start + replaced(kMug, ",3", ",-1")), "line 3: \"qty\" is below 0");
  EXPECT_EQ(errorIn(start + replaced(kMug, ",3", ",2147483648")),
            "line 3: \"qty\" does not fit in 32 bits");
  EXPECT_EQ(errorIn(start + replaced(kMug, "01/31/2026", "31/01/2026")),
            "line 3: \"cdate\" is not a date written MM/dd/yyyy: \"31/01/2026\"");
  EXPECT_EQ(errorIn(start + "\n" + replaced(kMug, "WHITE", "WH\"ITE")),
            "line 4: a quote is in the wrong place");
}

TEST(CsvDeliveries, RecogniseWhatSpreadsheetProgramsChange) {
  EXPECT_EQ(errorIn("doc;qty\nD1;\"3\"\n"),
            "line 1: the columns are separated by semicolons instead of commas");
  EXPECT_EQ(errorIn(kHeader + replaced(kMug, "5012746100000", "5.01275E+12")),
            "line 2: \"barcode\" was rounded by a spreadsheet program: \"5.01275E+12\"");
  EXPECT_EQ(errorIn(kHeader + replaced(kMug, "WHITE", "MUG, WHITE")),
            "line 2: 12 fields instead of 11; a field with a comma must be in quotation marks");
}

TEST(CsvDeliveries, NeedADeliveryABoxAndAnItem) {
  for (const std::string value : {"D1", "C001", "20138A"}) {
    const std::string line = replaced(kMug, value + ',', ",");
    EXPECT_TRUE(errorIn(kHeader + line).ends_with("\" is empty")) << errorIn(kHeader + line);
  }
}

TEST(CsvDeliveries, MayHaveNoBarcode) {
  const auto deliveries = deliveriesFromCsv(kHeader + replaced(kMug, "5012746100000", ""));
  EXPECT_EQ(deliveries.lines("D1")[0].article.barcode, "");
}

TEST(CsvDeliveries, MustBeUtf8) {
  EXPECT_EQ(errorIn(kHeader + replaced(kMug, "ö", "\xF6")), "the file is not UTF-8");
}

}  // namespace cartonpick::orders
