#include "service/DeliveryAnswer.h"

#include "service/JsonPieces.h"
#include "service/JsonValues.h"

#include <simdjson.h>
#include <string>
#include <string_view>

namespace {

using simdjson::dom::object;

const QString kEmpty = QStringLiteral("");

/// Reads a string that usually equals the previous line's; equal strings share their data.
class RepeatedText {
 public:
  QString read(simdjson::dom::element value) {
    if (!value.is_string()) {
      return textOf(value);
    }
    if (const std::string_view text = value.get_string(); m_last.isNull() || text != m_lastText) {
      m_last = textOf(value);
      m_lastText = text;
    }
    return m_last;
  }

 private:
  QString m_last;
  std::string m_lastText;
};

struct RepeatedTexts {
  RepeatedText doc;
  RepeatedText ordernum;
  RepeatedText carton;
};

OrderLine readLine(object fields, RepeatedTexts &repeated) {
  OrderLine line{kEmpty, kEmpty, kEmpty, kEmpty, kEmpty, kEmpty, {}};
  for (const auto [key, value] : fields) {
    if (key == "doc") {
      line.doc = repeated.doc.read(value);
    } else if (key == "ordernum") {
      line.ordernum = repeated.ordernum.read(value);
    } else if (key == "item") {
      line.item = textOf(value);
    } else if (key == "barcode") {
      line.barcode = textOf(value);
    } else if (key == "descr") {
      line.descr = textOf(value);
    } else if (key == "carton") {
      line.carton = repeated.carton.read(value);
    } else if (key == "qty") {
      line.qty = quantityOf(value);
    }
  }
  return line;
}

void readHeader(object fields, Delivery &answer) {
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

std::optional<Delivery> parseDeliveryAnswer(const QByteArray &body) {
  try {
    const JsonPieces pieces(jsonTextOf(body));
    Delivery answer{kEmpty, kEmpty, kEmpty, kEmpty, {}};
    JsonPieces::Reader reader(pieces);
    RepeatedTexts repeated;
    for (std::size_t i = 0; i < pieces.count(); ++i) {
      for (const object fields : reader.read(i)) {
        if (answer.lines.empty()) {
          readHeader(fields, answer);
        }
        answer.lines.push_back(readLine(fields, repeated));
      }
    }
    return answer;
  } catch (const simdjson::simdjson_error &) {
    return std::nullopt;
  }
}

std::optional<JsonResult> jsonResultOf(const std::optional<Delivery> &answer) {
  if (!answer) {
    return std::nullopt;
  }
  return JsonResult{answer->lines.empty() ? QString() : answer->lines.front().doc};
}
