#include "tablet_api/picking_body.h"

#include "sample_data.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

using Json = nlohmann::json;

std::string errorIn(const std::string &body) {
  return errorOf([&] { readPickingBody(body); });
}

/// The error about a picking of three lines of which the third has one member set otherwise.
std::string errorWith(const std::string &member, const Json &value) {
  Json picking = pickingJson(3);
  picking[2][member] = value;
  return errorIn(picking.dump());
}

std::string errorWithout(const std::string &member) {
  Json picking = pickingJson(3);
  picking[2].erase(member);
  return errorIn(picking.dump());
}

}  // namespace

TEST(PickingBody, IsReadLineByLine) {
  const auto lines = readPickingBody(pickingJson(3).dump());
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0], pickReport());
  EXPECT_EQ(lines[2].quantity, 3);
}

TEST(PickingBody, MayBePrettyPrinted) {
  EXPECT_EQ(readPickingBody(pickingJson(2).dump(4)).size(), 2U);
}

TEST(PickingBody, MayHaveQuantitiesOf32Bits) {
  Json picking = pickingJson(2);
  picking[0]["qty"] = 2147483647;
  picking[1]["qty"] = -2147483648LL;
  const auto lines = readPickingBody(picking.dump());
  EXPECT_EQ(lines[0].quantity, 2147483647);
  EXPECT_EQ(lines[1].quantity, -2147483647 - 1);
}

TEST(PickingBody, KeepsTextAsItIs) {
  Json picking = pickingJson();
  picking[0]["box"] = " C\tß ";
  EXPECT_EQ(readPickingBody(picking.dump())[0].box, " C\tß ");
}

TEST(PickingBody, HasNoTextThatAStoreCannotHold) {
  Json picking = pickingJson();
  picking[0]["box"] = std::string(255, 'C');
  EXPECT_EQ(readPickingBody(picking.dump())[0].box.size(), 255U);
  picking[0]["box"] = std::string(256, 'C');
  EXPECT_EQ(errorIn(picking.dump()), R"(line 1: "box" is longer than 255 bytes)");
  picking[0]["box"] = std::string("C\0", 2);
  EXPECT_EQ(errorIn(picking.dump()), R"(line 1: "box" has the character U+0000)");
}

TEST(PickingBody, MustBeJson) {
  EXPECT_EQ(errorIn("nonsense"),
            "the body is not JSON: parse error at line 1, column 2: syntax error while parsing "
            "value - invalid literal");
  EXPECT_EQ(errorIn(""),
            "the body is not JSON: parse error at line 1, column 1: syntax error while parsing "
            "value - unexpected end of input; expected '[', '{', or a literal");
}

TEST(PickingBody, MustBeWhole) {
  const std::string body = pickingJson(2).dump();
  for (std::size_t size = 0; size < body.size(); ++size) {
    EXPECT_TRUE(errorIn(body.substr(0, size)).starts_with("the body is not JSON: ")) << size;
  }
}

TEST(PickingBody, MayHaveNothingAfterItsEnd) {
  EXPECT_TRUE(errorIn(pickingJson().dump() + "]").starts_with("the body is not JSON: "));
  EXPECT_EQ(errorIn(pickingJson().dump() + '\0'),
            "the body is not JSON: it contains a NUL character");
}

TEST(PickingBody, MustBeUtf8) {
  const std::string error = errorIn("[\n\"\xFF\"]");
  EXPECT_EQ(error,
            "the body is not JSON: parse error at line 2, column 2: syntax error while parsing "
            "value - invalid string: ill-formed UTF-8 byte");
}

TEST(PickingBody, RefusesHugeNumbers) {
  EXPECT_EQ(errorIn("[1e999]"), "the body is not JSON: number overflow parsing '1e999'");
}

TEST(PickingBody, MayBeNestedDeeplyWithoutHarm) {
  EXPECT_TRUE(errorIn(std::string(1'000'000, '[')).starts_with("the body is not JSON: "));
  EXPECT_EQ(errorIn(std::string(100'000, '[') + std::string(100'000, ']')),
            "line 1: not an object");
}

TEST(PickingBody, MustBeAnArrayOfLines) {
  EXPECT_EQ(errorIn("{}"), "the body is not an array");
  EXPECT_EQ(errorIn("\"0\""), "the body is not an array");
  EXPECT_EQ(errorIn(" [ ] "), "the array is empty");
  EXPECT_EQ(errorIn("[7]"), "line 1: not an object");
}

TEST(PickingBody, MustHaveEveryMember) {
  for (const std::string member :
       {"barcode", "box", "doc", "item", "ordernum", "qty", "datepicked", "sent"}) {
    EXPECT_EQ(errorWithout(member), "line 3: \"" + member + "\" is missing");
  }
}

TEST(PickingBody, MayHaveNoOtherMember) {
  EXPECT_EQ(errorWith("colour", "red"), "line 3: \"colour\" is not a known member");
  EXPECT_EQ(errorWith("Qty", 1), "line 3: \"Qty\" is not a known member");
}

TEST(PickingBody, MayNotNameAMemberTwice) {
  std::string body = pickingJson(3).dump();
  body.insert(body.rfind('}'), R"(,"qty":1)");
  EXPECT_EQ(errorIn(body), "the body is ambiguous: object 3 has \"qty\" twice");
}

TEST(PickingBody, MustHaveTextWhereTextBelongs) {
  for (const std::string member : {"barcode", "box", "doc", "item", "ordernum", "datepicked"}) {
    EXPECT_EQ(errorWith(member, 1), "line 3: \"" + member + "\" is not a string");
    EXPECT_EQ(errorWith(member, nullptr), "line 3: \"" + member + "\" is not a string");
  }
}

TEST(PickingBody, MustHaveWholeQuantities) {
  EXPECT_EQ(errorWith("qty", "1"), "line 3: \"qty\" is not an integer number");
  EXPECT_EQ(errorWith("qty", 1.0), "line 3: \"qty\" is not an integer number");
  EXPECT_EQ(errorWith("qty", nullptr), "line 3: \"qty\" is not an integer number");
  EXPECT_EQ(errorWith("qty", true), "line 3: \"qty\" is not an integer number");
}

TEST(PickingBody, MayNotHaveQuantitiesBeyond32Bits) {
  EXPECT_EQ(errorWith("qty", 2147483648U), "line 3: \"qty\" does not fit in 32 bits");
  EXPECT_EQ(errorWith("qty", -2147483649LL), "line 3: \"qty\" does not fit in 32 bits");
  EXPECT_EQ(errorWith("qty", 18446744073709551615U), "line 3: \"qty\" does not fit in 32 bits");
}

TEST(PickingBody, MustHaveTimesOfTheCalendar) {
  EXPECT_EQ(errorWith("datepicked", "2026-02-29 12:00:00"),
            "line 3: \"datepicked\" is not a time written yyyy-MM-dd HH:mm:ss: "
            "\"2026-02-29 12:00:00\"");
}

TEST(PickingBody, MustNotBeMarkedAsSent) {
  EXPECT_EQ(errorWith("sent", 1), "line 3: \"sent\" is not 0");
  EXPECT_EQ(errorWith("sent", "0"), "line 3: \"sent\" is not an integer number");
  EXPECT_EQ(errorWith("sent", false), "line 3: \"sent\" is not an integer number");
}

TEST(PickingBody, MustBeOfOneDelivery) {
  EXPECT_EQ(errorWith("doc", "D2"), "line 3: delivery \"D2\" is not \"D1\", that of line 1");
}

}  // namespace cartonpick::orders
