#include "files/json_deliveries.h"

#include "json/json_text.h"
#include "json/order_json.h"
#include "json/strict_object.h"
#include "model/input_error.h"

#include <array>
#include <string>

namespace cartonpick::orders {

namespace {

constexpr std::array<std::string_view, 2> kMembers = {"deliveries", "articles"};

template <class Element>
std::vector<Element> readElements(const nlohmann::json &array, const std::string &name,
                                  Element (*read)(const nlohmann::json &)) {
  if (!array.is_array()) {
    throw InputError(name + " is not an array");
  }
  std::vector<Element> elements;
  for (const nlohmann::json &value : array) {
    const std::string place = "element " + std::to_string(elements.size() + 1) + " of " + name;
    elements.push_back(readAt(place, [&] { return read(value); }));
  }
  return elements;
}

}  // namespace

Deliveries deliveriesFromJson(std::string_view text) {
  const nlohmann::json root = parseJson(text, "the file");
  if (!root.is_object()) {
    return {readElements(root, "the file", orderLineFromJson), {}};
  }
  readAt("the file", [&] { return StrictObject(root, kMembers); });
  return {readElements(root["deliveries"], "\"deliveries\"", orderLineFromJson),
          readElements(root["articles"], "\"articles\"", articleFromJson)};
}

}  // namespace cartonpick::orders
