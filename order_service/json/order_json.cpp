#include "json/order_json.h"

#include "json/strict_object.h"
#include "model/calendar.h"
#include "model/input_error.h"

namespace cartonpick::orders {

namespace {

constexpr std::array<std::string_view, 3> kArticleMembers = {"barcode", "item", "descr"};

constexpr std::size_t kMaxDescriptionBytes = 1000;

std::string filledText(const StrictObject &object, const std::string &name) {
  std::string text = object.text(name);
  if (text.empty()) {
    throw InputError('"' + name + "\" is empty");
  }
  return text;
}

/// Whether a spreadsheet program made the text from a long number, as 4.00692E+12.
bool isRoundedNumber(std::string_view text) {
  const auto exponent = text.find("E+");
  return exponent != std::string_view::npos && exponent > 0 &&
         text.find_first_not_of("0123456789.,") == exponent &&
         text.find_first_not_of("0123456789", exponent + 2) == std::string_view::npos;
}

std::string barcode(const StrictObject &object) {
  std::string text = object.text("barcode");
  if (isRoundedNumber(text)) {
    throw InputError(R"("barcode" was rounded by a spreadsheet program: ")" + text + '"');
  }
  return text;
}

Article articleOf(const StrictObject &object) {
  return {barcode(object), filledText(object, "item"), object.text("descr", kMaxDescriptionBytes)};
}

std::string date(const StrictObject &object, const std::string &name) {
  std::string text = object.text(name);
  if (!isDate(text)) {
    throw InputError('"' + name + "\" is not a date written MM/dd/yyyy: \"" + text + '"');
  }
  return text;
}

std::int32_t orderedQuantity(const StrictObject &object) {
  const std::int32_t quantity = object.integer("qty");
  if (quantity < 0) {
    throw InputError("\"qty\" is below 0");
  }
  return quantity;
}

}  // namespace

nlohmann::ordered_json toJson(const OrderLine &line) {
  return {{"cusname", line.customer},
          {"brand", line.brand},
          {"cdate", line.orderDate},
          {"date", line.shippingDate},
          {"doc", line.delivery},
          {"ordernum", line.order},
          {"item", line.article.item},
          {"barcode", line.article.barcode},
          {"descr", line.article.description},
          {"qty", line.quantity},
          {"carton", line.carton}};
}

nlohmann::ordered_json toJson(const Article &article) {
  return {{"barcode", article.barcode}, {"item", article.item}, {"descr", article.description}};
}

OrderLine orderLineFromJson(const nlohmann::json &value) {
  const StrictObject object(value, kOrderLineMembers);
  return {.customer = object.text("cusname"),
          .brand = object.text("brand"),
          .orderDate = date(object, "cdate"),
          .shippingDate = date(object, "date"),
          .delivery = filledText(object, "doc"),
          .order = object.text("ordernum"),
          .article = articleOf(object),
          .quantity = orderedQuantity(object),
          .carton = filledText(object, "carton")};
}

Article articleFromJson(const nlohmann::json &value) {
  return articleOf(StrictObject(value, kArticleMembers));
}

}  // namespace cartonpick::orders
