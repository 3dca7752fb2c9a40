#include "files/json_deliveries.h"

#include "sample_data.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

using Json = nlohmann::json;

std::string errorIn(const std::string &text) {
  return errorOf([&] { deliveriesFromJson(text); });
}

/// The error about an array of a good line and of the same line after `change`.
template <class Change>
std::string errorAfter(Change change) {
  Json lines = Json::array({orderLineJson(), orderLineJson()});
  change(lines[1]);
  return errorIn(lines.dump());
}

}  // namespace

TEST(JsonDeliveries, AreReadFromAnArrayOfOrderLines) {
  const auto deliveries = deliveriesFromJson(Json::array({orderLineJson()}).dump(2));
  ASSERT_EQ(deliveries.lines("D1").size(), 1U);
  EXPECT_EQ(deliveries.lines("D1")[0], sampleDeliveries().lines("D1")[0]);
  EXPECT_EQ(deliveries.catalogue().size(), 1U);
}

TEST(JsonDeliveries, AreReadFromAnObjectWithACatalogue) {
  const Json article = {{"barcode", "1"}, {"item", "2"}, {"descr", "3"}};
  const Json file = {{"deliveries", {orderLineJson()}}, {"articles", {article}}};
  const auto deliveries = deliveriesFromJson(file.dump());
  EXPECT_EQ(deliveries.lines("D1").size(), 1U);
  ASSERT_EQ(deliveries.catalogue().size(), 2U);
  EXPECT_EQ(deliveries.catalogue()[0], (Article{"1", "2", "3"}));
  EXPECT_EQ(deliveries.catalogue()[1].item, "20138A");
}

TEST(JsonDeliveries, MayBeNone) {
  EXPECT_TRUE(deliveriesFromJson("[]").catalogue().empty());
}

TEST(JsonDeliveries, MustBeJson) {
  EXPECT_EQ(errorIn("[{]"),
            "the file is not JSON: parse error at line 1, column 3: syntax error while parsing "
            "object key - unexpected ']'; expected string literal");
  EXPECT_EQ(errorIn("7"), "the file is not an array");
}

TEST(JsonDeliveries, NameTheElementThatIsWrong) {
  EXPECT_EQ(errorAfter([](Json &line) { line = 1; }), "element 2 of the file: not an object");
  EXPECT_EQ(errorAfter([](Json &line) { line.erase("carton"); }),
            "element 2 of the file: \"carton\" is missing");
  EXPECT_EQ(errorAfter([](Json &line) { line["colour"] = "red"; }),
            "element 2 of the file: \"colour\" is not a known member");
  EXPECT_EQ(errorAfter([](Json &line) { line["qty"] = "3"; }),
            "element 2 of the file: \"qty\" is not an integer number");
  EXPECT_EQ(errorAfter([](Json &line) { line["qty"] = -1; }),
            "element 2 of the file: \"qty\" is below 0");
  EXPECT_EQ(errorAfter([](Json &line) { line["date"] = "02/30/2026"; }),
            "element 2 of the file: \"date\" is not a date written MM/dd/yyyy: \"02/30/2026\"");
  EXPECT_EQ(errorAfter([](Json &line) { line["doc"] = 4711; }),
            "element 2 of the file: \"doc\" is not a string");
}

TEST(JsonDeliveries, NameWhatIsWrongInAnObject) {
  EXPECT_EQ(errorIn(R"({"deliveries": []})"), "the file: \"articles\" is missing");
  EXPECT_EQ(errorIn(R"({"deliveries": {}, "articles": []})"), "\"deliveries\" is not an array");
  EXPECT_EQ(errorIn(R"({"deliveries": [], "articles": [{"item": "1", "descr": ""}]})"),
            "element 1 of \"articles\": \"barcode\" is missing");
}

TEST(JsonDeliveries, MayNotNameAMemberTwice) {
  EXPECT_EQ(errorIn(R"([{"a": {"b": 1}}, {"b": 1, "b": 2}])"),
            "the file is ambiguous: object 3 has \"b\" twice");
}

}  // namespace cartonpick::orders
