// Our readers of answers beside another reader of JSON, Qt's, on documents that are made of the
// input: both take or refuse the same, and see the same values.
//
// Ours refuses, on purpose, what JSON does not allow but Qt lets pass: control characters and
// unknown escapes in strings. It refuses what no text or number of ours can be: surrogates without
// their other half, integers beyond 64 bits and numbers beyond a double; and a member that is named
// twice if either is no text or number, where Qt knows only the last. What Qt refuses, ours refuses
// as well.

#include "JsonGenerator.h"
#include "Property.h"
#include "base/Int32.h"
#include "base/Utf8.h"
#include "service/CatalogueAnswer.h"
#include "service/DeliveryAnswer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

#include <algorithm>
#include <array>

namespace {

/// The body as Qt reads it, if it is an array of objects.
std::optional<QList<QJsonObject>> peerOf(const QByteArray &body) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(body, &error);
  if (error.error != QJsonParseError::NoError || !document.isArray()) {
    return std::nullopt;
  }
  QList<QJsonObject> objects;
  for (const QJsonValue element : document.array()) {
    if (!element.isObject()) {
      return std::nullopt;
    }
    objects.append(element.toObject());
  }
  return objects;
}

template <class Keys>
bool hasOnlyValues(const QJsonObject &object, const Keys &keys) {
  return std::none_of(keys.begin(), keys.end(), [&](const QString &key) {
    return object[key].isArray() || object[key].isObject();
  });
}

/// Whether `text` is an integer that Qt, which knows none so large, reads as `value`.
bool isUnsigned(const QString &text, double value) {
  bool isInteger = false;
  const qulonglong number = text.toULongLong(&isInteger);
  return isInteger && static_cast<double>(number) == value;
}

/// Whether `text` is how we read `value`. Of a number Qt does not tell whether it was delivered
/// with a fraction or an exponent, which decides how it is written.
bool isTextOf(const QString &text, const QJsonValue &value) {
  switch (value.type()) {
    case QJsonValue::String:
      // Of some strings Qt loses a U+FEFF at the beginning.
      return text == value.toString() || text == QChar::ByteOrderMark + value.toString();
    case QJsonValue::Bool:
      return text == (value.toBool() ? u"1" : u"0");
    case QJsonValue::Double:
      return text == QString::number(value.toInteger()) || text == u"-0" ||
             text == QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest) ||
             isUnsigned(text, value.toDouble());
    default:
      return text.isEmpty() && !text.isNull();
  }
}

bool isQuantityOf(const Quantity &quantity, const QJsonValue &value) {
  switch (value.type()) {
    case QJsonValue::Double:
      return quantity.value() == clampToInt32(value.toDouble()) && isTextOf(quantity.text(), value);
    case QJsonValue::String:
      return quantity.value() == intValue(quantity.text()) && isTextOf(quantity.text(), value);
    case QJsonValue::Bool:
      return quantity.value() == (value.toBool() ? 1 : 0);
    default:
      return quantity == Quantity(0);
  }
}

void checkDelivery(const Delivery &answer, const QList<QJsonObject> &peer) {
  require(answer.lines.size() == static_cast<std::size_t>(peer.size()),
          "a delivery has a line for every element");
  for (std::size_t i = 0; i < answer.lines.size(); ++i) {
    const OrderLine &line = answer.lines[i];
    const QJsonObject &object = peer[static_cast<qsizetype>(i)];
    require(isTextOf(line.doc, object["doc"]) && isTextOf(line.ordernum, object["ordernum"]) &&
                isTextOf(line.item, object["item"]) && isTextOf(line.barcode, object["barcode"]) &&
                isTextOf(line.descr, object["descr"]) && isTextOf(line.carton, object["carton"]),
            "both readers see the same texts of a line");
    require(isQuantityOf(line.qty, object["qty"]), "both readers see the same quantity");
  }
  if (!peer.isEmpty()) {
    const QJsonObject &first = peer.first();
    require(isTextOf(answer.cusname, first["cusname"]) && isTextOf(answer.brand, first["brand"]) &&
                isTextOf(answer.cdate, first["cdate"]) && isTextOf(answer.date, first["date"]),
            "both readers see the same header");
  }
}

void checkCatalogue(const CatalogueAnswer &answer, const QList<QJsonObject> &peer) {
  auto object = peer.begin();
  answer.forEachArticle([&](const Article &article) {
    require(object != peer.end(), "a catalogue has an article for every element");
    const auto isText = [&](const std::string &text, const char *key) {
      return isTextOf(textOfUtf8(text), (*object)[QLatin1String(key)]);
    };
    require(isText(article.barcode, "barcode") && isText(article.item, "item") &&
                isText(article.descr, "descr"),
            "both readers see the same texts of an article");
    ++object;
    return true;
  });
  require(object == peer.end(), "a catalogue has no other articles");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static const std::array<QString, 7> kLineKeys = {"doc",   "ordernum", "item", "barcode",
                                                   "descr", "carton",   "qty"};
  static const std::array<QString, 4> kHeaderKeys = {"cusname", "brand", "cdate", "date"};
  static const std::array<QString, 3> kArticleKeys = {"barcode", "item", "descr"};
  FuzzInput input(data, size);
  // A catalogue is read by several threads, whose beginning takes longer than all the rest.
  constexpr std::size_t kSometimes = 8;
  const bool readsCatalogue = input.onceIn(kSometimes);
  JsonGenerator generator(input);
  const QByteArray body = QByteArray::fromStdString(generator.document());
  const auto peer = peerOf(body);
  const auto delivery = parseDeliveryAnswer(body);
  const auto catalogue = readsCatalogue ? CatalogueAnswer::read(body) : std::nullopt;
  const bool isRefused = generator.hasWhatWeRefuse() || !peer;
  const bool isDelivery =
      !isRefused &&
      std::all_of(peer->begin(), peer->end(),
                  [](const QJsonObject &object) { return hasOnlyValues(object, kLineKeys); }) &&
      (peer->isEmpty() || hasOnlyValues(peer->first(), kHeaderKeys));
  const bool isCatalogue =
      !isRefused && std::all_of(peer->begin(), peer->end(), [](const QJsonObject &object) {
        return hasOnlyValues(object, kArticleKeys);
      });
  if (generator.mayBeRefused()) {
    require(peer || (!delivery && !catalogue), "what Qt refuses is refused");
  } else {
    require(delivery.has_value() == isDelivery, "both readers take the same deliveries");
    require(!readsCatalogue || catalogue.has_value() == isCatalogue,
            "both readers take the same catalogues");
  }
  if (delivery) {
    checkDelivery(*delivery, *peer);
  }
  if (catalogue) {
    checkCatalogue(*catalogue, *peer);
  }
  return 0;
}
