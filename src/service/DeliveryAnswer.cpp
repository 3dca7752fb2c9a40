#include "service/DeliveryAnswer.h"

#include "service/JsonValues.h"

#include <simdjson.h>
#include <string_view>

namespace {

using simdjson::dom::object;

const QString kEmpty = QStringLiteral("");

OrderLine readLine(object fields) {
  OrderLine line{kEmpty, kEmpty, kEmpty, kEmpty, kEmpty, kEmpty, {}};
  for (const auto [key, value] : fields) {
    if (key == "doc") {
      line.doc = textOf(value);
    } else if (key == "ordernum") {
      line.ordernum = textOf(value);
    } else if (key == "item") {
      line.item = textOf(value);
    } else if (key == "barcode") {
      line.barcode = textOf(value);
    } else if (key == "descr") {
      line.descr = textOf(value);
    } else if (key == "carton") {
      line.carton = textOf(value);
    } else if (key == "qty") {
      line.qty = quantityOf(value);
    }
  }
  return line;
}

void readHeader(object fields, DeliveryAnswer &answer) {
  for (const auto [key, value] : fields) {
    if (key == "cusname") {
      answer.cusname = textOf(value);
    } else if (key == "brand") {
      answer.brand = textOf(value);
    } else if (key == "cdate") {
      answer.cdate = textOf(value);
    } else if (key == "date") {
      answer.date = textOf(value);
    }
  }
}

}  // namespace

std::optional<DeliveryAnswer> parseDeliveryAnswer(const QByteArray &body) {
  try {
    simdjson::dom::parser parser;
    const std::string_view text = jsonTextOf(body);
    const simdjson::dom::array elements = parser.parse(text.data(), text.size());
    DeliveryAnswer answer{kEmpty, kEmpty, kEmpty, kEmpty, {}};
    answer.lines.reserve(elements.size());
    for (const object fields : elements) {
      if (answer.lines.empty()) {
        readHeader(fields, answer);
      }
      answer.lines.push_back(readLine(fields));
    }
    return answer;
  } catch (const simdjson::simdjson_error &) {
    return std::nullopt;
  }
}

std::optional<JsonResult> jsonResultOf(const std::optional<DeliveryAnswer> &answer) {
  if (!answer) {
    return std::nullopt;
  }
  return JsonResult{answer->lines.empty() ? QString() : answer->lines.front().doc};
}
