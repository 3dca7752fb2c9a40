#include "json/json_writer.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace cartonpick::orders {

namespace {

std::string objectWith(const std::string &text) {
  JsonArrayWriter writer;
  writer.beginObject();
  writer.add("a", text);
  writer.endObject();
  return writer.take();
}

}  // namespace

TEST(JsonArrayWriter, WritesObjectsWithTheirMembers) {
  JsonArrayWriter writer;
  for (const std::int32_t number : {2147483647, -2147483647 - 1}) {
    writer.beginObject();
    writer.add("text", "Ann & Söhne");
    writer.add("number", number);
    writer.endObject();
  }
  EXPECT_EQ(writer.take(), R"([{"text":"Ann & Söhne","number":2147483647},)"
                           R"({"text":"Ann & Söhne","number":-2147483648}])");
}

TEST(JsonArrayWriter, WritesAnEmptyArray) {
  EXPECT_EQ(JsonArrayWriter().take(), "[]");
}

TEST(JsonArrayWriter, EscapesAsAnotherWriterDoes) {
  for (int code = 0; code < 128; ++code) {
    const std::string text = std::string("a") + static_cast<char>(code) + "€😀";
    const auto expected = nlohmann::json::array({{{"a", text}}});
    EXPECT_EQ(objectWith(text), expected.dump()) << code;
  }
}

}  // namespace cartonpick::orders
