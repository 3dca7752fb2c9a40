#include "tablet_api/picking_body.h"

#include "json/json_text.h"
#include "json/strict_object.h"
#include "model/calendar.h"
#include "model/input_error.h"

#include <array>
#include <string>

namespace cartonpick::orders {

namespace {

constexpr std::array<std::string_view, 8> kMembers = {"barcode",  "box", "doc",        "item",
                                                      "ordernum", "qty", "datepicked", "sent"};

std::string pickedAt(const StrictObject &object) {
  std::string text = object.text("datepicked");
  if (!isDateTime(text)) {
    throw InputError(R"("datepicked" is not a time written yyyy-MM-dd HH:mm:ss: ")" + text + '"');
  }
  return text;
}

void checkNotSent(const StrictObject &object) {
  if (object.integer("sent") != 0) {
    throw InputError("\"sent\" is not 0");
  }
}

PickReport readLine(const nlohmann::json &value) {
  const StrictObject object(value, kMembers);
  checkNotSent(object);
  return {.delivery = object.text("doc"),
          .order = object.text("ordernum"),
          .box = object.text("box"),
          .item = object.text("item"),
          .barcode = object.text("barcode"),
          .quantity = object.integer("qty"),
          .pickedAt = pickedAt(object)};
}

void checkSameDelivery(const PickReport &line, const PickReport &first) {
  if (line.delivery != first.delivery) {
    throw InputError("delivery \"" + line.delivery + "\" is not \"" + first.delivery +
                     "\", that of line 1");
  }
}

}  // namespace

std::vector<PickReport> readPickingBody(std::string_view body) {
  const nlohmann::json root = parseJson(body, "the body");
  if (!root.is_array()) {
    throw InputError("the body is not an array");
  }
  if (root.empty()) {
    throw InputError("the array is empty");
  }
  std::vector<PickReport> lines;
  for (const nlohmann::json &value : root) {
    readAt("line " + std::to_string(lines.size() + 1), [&] {
      lines.push_back(readLine(value));
      checkSameDelivery(lines.back(), lines.front());
    });
  }
  return lines;
}

}  // namespace cartonpick::orders
