// Compares our answer parsers with Qt's JSON parser on generated documents. Both must accept and
// reject the same documents and read the same values.
//
// Our parsers intentionally reject more than Qt's: control characters and unknown escapes in
// strings, which JSON does not allow; in members that the program uses, lone surrogates and
// integers beyond 64 bits, which have no value in the program; and duplicate members if one of them
// is not a string or number, where Qt sees only the last one. Of the generated documents, our
// parsers reject all that Qt's rejects.

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

/// Parses `body` with Qt. Returns std::nullopt if it is not an array of objects.
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

/// Returns true if `text` is an unsigned 64-bit integer whose nearest double is `value`. Qt reads
/// integers beyond the signed range as doubles.
bool isUnsigned(const QString &text, double value) {
  bool isInteger = false;
  const qulonglong number = text.toULongLong(&isInteger);
  return isInteger && static_cast<double>(number) == value;
}

/// Returns true if `text` could be our parsers' text for `value`. Several texts are possible for a
/// number: ours depends on a fraction or exponent in the JSON, which Qt does not report.
bool isTextOf(const QString &text, const QJsonValue &value) {
  switch (value.type()) {
    case QJsonValue::String:
      // Qt drops a U+FEFF at the beginning of some strings.
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
            "both parsers read the same texts of a line");
    require(isQuantityOf(line.qty, object["qty"]), "both parsers read the same quantity");
  }
  if (!peer.isEmpty()) {
    const QJsonObject &first = peer.first();
    require(isTextOf(answer.cusname, first["cusname"]) && isTextOf(answer.brand, first["brand"]) &&
                isTextOf(answer.cdate, first["cdate"]) && isTextOf(answer.date, first["date"]),
            "both parsers read the same header");
  }
}

void checkCatalogue(const CatalogueAnswer &answer, const QList<QJsonObject> &peer) {
  auto object = peer.begin();
  answer.forEachArticle([&](const Article &article) {
    require(object != peer.end(), "a catalogue has an article for every element");
    const auto isText = [&](const std::optional<std::string> &text, const char *key) {
      const QJsonValue value = (*object)[QLatin1String(key)];
      return text ? isTextOf(textOfUtf8(*text), value) : value.isUndefined() || value.isNull();
    };
    require(isText(article.barcode, "barcode") && isText(article.item, "item") &&
                isText(article.descr, "descr"),
            "both parsers read the same texts of an article");
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
  // Reading a catalogue starts threads, which takes longer than everything else.
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
    require(peer || (!delivery && !catalogue), "our parsers reject what Qt rejects");
  } else {
    require(delivery.has_value() == isDelivery, "both parsers accept the same deliveries");
    require(!readsCatalogue || catalogue.has_value() == isCatalogue,
            "both parsers accept the same catalogues");
  }
  if (delivery) {
    checkDelivery(*delivery, *peer);
  }
  if (catalogue) {
    checkCatalogue(*catalogue, *peer);
  }
  return 0;
}
