#include "json/order_json.h"

#include "json/json_writer.h"
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

/// Returns true if a spreadsheet program has rounded a long number, as 4.00692E+12.
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

std::string toJson(const std::vector<OrderLine> &lines) {
  JsonArrayWriter writer;
  for (const OrderLine &line : lines) {
    writer.beginObject();
    writer.add("cusname", line.customer);
    writer.add("brand", line.brand);
    writer.add("cdate", line.orderDate);
    writer.add("date", line.shippingDate);
    writer.add("doc", line.delivery);
    writer.add("ordernum", line.order);
    writer.add("item", line.article.item);
    writer.add("barcode", line.article.barcode);
    writer.add("descr", line.article.description);
    writer.add("qty", line.quantity);
    writer.add("carton", line.carton);
    writer.endObject();
  }
  return writer.take();
}

std::string toJson(const std::vector<Article> &articles) {
  JsonArrayWriter writer;
  for (const Article &article : articles) {
    writer.beginObject();
    writer.add("barcode", article.barcode);
    writer.add("item", article.item);
    writer.add("descr", article.description);
    writer.endObject();
  }
  return writer.take();
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
