#include "service/DeliveryAnswer.h"

#include "base/Int32.h"
#include "support/TestClass.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QRandomGenerator>
#include <QTest>
#include <QVariant>

#include <array>

namespace {

constexpr const char *kSmallAnswer =
    R"([{"cusname":"Corner Shop","brand":"Hearth","cdate":"03/25/2026","date":"04/01/2026",)"
    R"("doc":"4711","ordernum":"A1","item":"85123A","barcode":"2900","descr":"HEART",)"
    R"("qty":6,"carton":"C1"},{"doc":"4711","ordernum":"A2","item":"71053","barcode":"2901",)"
    R"("descr":"LANTERN","qty":"2","carton":"C2"}])";

/// Parses an answer with the single element `element`.
std::optional<Delivery> answerOf(const QByteArray &element) {
  return parseDeliveryAnswer('[' + element + ']');
}

/// Returns all fields of a line as one string, for comparison.
QString textOf(const OrderLine &line) {
  return QStringList{line.doc,   line.ordernum, line.item,       line.barcode,
                     line.descr, line.carton,   line.qty.text(), QString::number(line.qty.value())}
      .join(u'|');
}

QString textOf(const std::optional<Delivery> &answer) {
  if (!answer) {
    return QStringLiteral("nothing");
  }
  QStringList texts{answer->cusname, answer->brand, answer->cdate, answer->date};
  for (const OrderLine &line : answer->lines) {
    texts.append(textOf(line));
  }
  return texts.join(u'\n');
}

/// A second implementation of `parseDeliveryAnswer`, based on Qt's JSON parser.
namespace peer {

bool isValue(const QJsonValue &value) {
  return !value.isArray() && !value.isObject();
}

QString textOf(const QJsonValue &value) {
  switch (value.type()) {
    case QJsonValue::Bool:
      return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QJsonValue::Double: {
      const QVariant number = value.toVariant();
      return number.typeId() == QMetaType::LongLong
                 ? QString::number(number.toLongLong())
                 : QString::number(number.toDouble(), 'g', QLocale::FloatingPointShortest);
    }
    case QJsonValue::String:
      return value.toString();
    default:
      return QStringLiteral("");
  }
}

Quantity quantityOf(const QJsonValue &value) {
  if (value.isDouble()) {
    return Quantity::delivered(clampToInt32(value.toDouble()), textOf(value));
  }
  return value.isString() || value.isBool() ? Quantity::delivered(textOf(value)) : Quantity();
}

std::optional<Delivery> parse(const QByteArray &body) {
  const QJsonArray elements = QJsonDocument::fromJson(body).array();
  Delivery answer;
  for (const QJsonValue &element : elements) {
    const QJsonObject fields = element.toObject();
    for (const char *key : {"doc", "ordernum", "item", "barcode", "descr", "carton", "qty"}) {
      if (!isValue(fields[QLatin1String(key)])) {
        return std::nullopt;
      }
    }
    if (answer.lines.empty()) {
      for (const char *key : {"cusname", "brand", "cdate", "date"}) {
        if (!isValue(fields[QLatin1String(key)])) {
          return std::nullopt;
        }
      }
      answer.cusname = textOf(fields[u"cusname"]);
      answer.brand = textOf(fields[u"brand"]);
      answer.cdate = textOf(fields[u"cdate"]);
      answer.date = textOf(fields[u"date"]);
    }
    answer.lines.push_back({textOf(fields[u"doc"]), textOf(fields[u"ordernum"]),
                            textOf(fields[u"item"]), textOf(fields[u"barcode"]),
                            textOf(fields[u"descr"]), textOf(fields[u"carton"]),
                            quantityOf(fields[u"qty"])});
  }
  return answer;
}

}  // namespace peer

/// Generates pseudo-random answers, the same ones in every run.
class Generator {
 public:
  QByteArray answer() {
    QJsonArray elements;
    const int count = below(6);
    for (int i = 0; i < count; ++i) {
      elements.append(element());
    }
    return QJsonDocument(elements).toJson(below(2) == 0 ? QJsonDocument::Compact
                                                        : QJsonDocument::Indented);
  }

 private:
  int below(int limit) { return m_random.bounded(limit); }

  QJsonObject element() {
    QJsonObject fields;
    for (const char *key : {"cusname", "brand", "cdate", "date", "doc", "ordernum", "item",
                            "barcode", "descr", "qty", "carton", "remark"}) {
      constexpr int kOneInTen = 10;
      if (below(kOneInTen) != 0) {
        fields.insert(QLatin1String(key), value(QLatin1String(key) == u"remark"));
      }
    }
    return fields;
  }

  QJsonValue value(bool mayNest) {
    constexpr int kKinds = 40;
    switch (below(kKinds)) {
      case 0:
        return QJsonValue::Null;
      case 1:
        return below(2) == 0;
      case 2:
        return static_cast<double>(below(2'000'001) - 1'000'000) / 64;
      case 3:
        return static_cast<qint64>(m_random.generate64());
      case 4:
        return mayNest || below(4) == 0 ? QJsonValue(QJsonArray{1, 2}) : QJsonValue(7);
      case 5:
        return mayNest || below(4) == 0 ? QJsonValue(QJsonObject{{QStringLiteral("a"), 1}})
                                        : QJsonValue(8);
      default:
        return below(3) == 0 ? QJsonValue(below(1000)) : QJsonValue(text());
    }
  }

  QString text() {
    static const std::array kPieces{
        QStringLiteral("a"), QStringLiteral("7"),   QStringLiteral("\""), QStringLiteral("\\"),
        QStringLiteral("/"), QStringLiteral("\n"),  QStringLiteral("é"),  QStringLiteral("📦"),
        QStringLiteral(" "), QString(QChar(u'\0')), QStringLiteral("-"),  QStringLiteral("}],")};
    QString result;
    constexpr int kMaxPieces = 12;
    for (int i = below(kMaxPieces); i > 0; --i) {
      result += kPieces.at(static_cast<std::size_t>(below(static_cast<int>(kPieces.size()))));
    }
    return result;
  }

  QRandomGenerator m_random{20260302};
};

}  // namespace

class DeliveryAnswerTest : public QObject {
  Q_OBJECT

 private slots:
  void anAnswerIsReadCompletely() {
    const auto answer = parseDeliveryAnswer(kSmallAnswer);
    QCOMPARE(textOf(answer),
             "Corner Shop\nHearth\n03/25/2026\n04/01/2026\n"
             "4711|A1|85123A|2900|HEART|C1|6|6\n"
             "4711|A2|71053|2901|LANTERN|C2|2|2");
  }

  void anEmptyListIsAnAnswerWithoutLines() {
    const auto answer = parseDeliveryAnswer(" [ ] \n");
    QVERIFY(answer.has_value());
    QVERIFY(answer->lines.empty());
  }

  void missingAndNullFieldsAreEmpty_data() {
    QTest::addColumn<QByteArray>("element");
    QTest::newRow("missing") << QByteArray("{}");
    QTest::newRow("null") << QByteArray(
        R"({"cusname":null,"brand":null,"cdate":null,"date":null,"doc":null,"ordernum":null,)"
        R"("item":null,"barcode":null,"descr":null,"qty":null,"carton":null})");
  }
  void missingAndNullFieldsAreEmpty() {
    QFETCH(const QByteArray, element);
    const auto answer = answerOf(element);
    QVERIFY(answer.has_value());
    const OrderLine &line = answer->lines.front();
    for (const QString &text :
         {answer->cusname, answer->brand, answer->cdate, answer->date, line.doc, line.ordernum,
          line.item, line.barcode, line.descr, line.carton}) {
      QVERIFY(text.isEmpty());
      QVERIFY(!text.isNull());
    }
    QCOMPARE(line.qty, Quantity(0));
  }

  void numbersAndStringsAreConvertedToEachOther() {
    const auto answer = answerOf(
        R"({"cusname":1,"brand":2,"cdate":3,"date":4,"doc":4711,"ordernum":1.5,"item":85123,)"
        R"("barcode":12345678901234567890,"descr":true,"qty":"6 pcs","carton":-1})");
    QCOMPARE(textOf(answer), "1\n2\n3\n4\n4711|1.5|85123|12345678901234567890|1|-1|6 pcs|6");
  }

  void theHeaderComesFromTheFirstElement() {
    const auto answer = parseDeliveryAnswer(R"([{"brand":"first"},{"brand":"second"}])");
    QCOMPARE(answer->brand, "first");
    QCOMPARE(answer->lines.size(), 2U);
  }

  void aHeaderFieldMissingInTheFirstElementIsEmpty() {
    const auto answer = parseDeliveryAnswer(R"([{},{"brand":"second"}])");
    QCOMPARE(answer->brand, "");
  }

  void theLastOfTwoEqualKeysWins() {
    const auto answer = answerOf(R"({"item":"first","item":"last","qty":1,"qty":2})");
    QCOMPARE(answer->lines.front().item, "last");
    QCOMPARE(answer->lines.front().qty.value(), 2);
  }

  void keysAreComparedExactly() {
    const auto answer = answerOf(R"({"Item":"a","item ":"b","ITEM":"c"})");
    QCOMPARE(answer->lines.front().item, "");
  }

  void escapesInAKeyAreDecoded() {
    QCOMPARE(answerOf("{\"it\\u0065m\":\"a\"}")->lines.front().item, "a");
  }

  void unknownKeysAreIgnored() {
    const auto answer = answerOf(R"({"item":"a","remarks":[{"x":[1,2]},null],"more":{"y":{}}})");
    QCOMPARE(answer->lines.front().item, "a");
  }

  void unknownKeysMayHaveAnyValue_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("beyond the range of a double") << QByteArray("1e999");
    QTest::newRow("400 digits") << '-' + QByteArray(400, '7');
    QTest::newRow("nested number") << QByteArray(R"([{"a":[1e999]}])");
    QTest::newRow("deep nesting") << QByteArray(100'000, '[') + QByteArray(100'000, ']');
    QTest::newRow("half a surrogate pair") << QByteArray(R"("\ud83d")");
  }
  void unknownKeysMayHaveAnyValue() {
    QFETCH(const QByteArray, value);
    QByteArray body = kSmallAnswer;
    body.replace(R"("item")", R"("remark":)" + value + R"(,"item")");
    QCOMPARE(textOf(parseDeliveryAnswer(body)), textOf(parseDeliveryAnswer(kSmallAnswer)));
  }

  void aHeaderFieldOfALaterElementMayHaveAnyValue() {
    QByteArray body = kSmallAnswer;
    body.replace(R"({"doc")", R"({"cusname":1e999,"date":[[]],"doc")");
    QCOMPARE(textOf(parseDeliveryAnswer(body)), textOf(parseDeliveryAnswer(kSmallAnswer)));
  }

  void aByteOrderMarkIsSkipped() {
    QCOMPARE(textOf(parseDeliveryAnswer(QByteArray("\xEF\xBB\xBF") + kSmallAnswer)),
             textOf(parseDeliveryAnswer(kSmallAnswer)));
  }

  void aBodyThatIsNotAListOfObjectsIsRejected_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("only white space") << QByteArray(" \n\t");
    QTest::newRow("only a byte order mark") << QByteArray("\xEF\xBB\xBF");
    QTest::newRow("text") << QByteArray("Service Unavailable");
    QTest::newRow("HTML page") << QByteArray("<html></html>");
    QTest::newRow("object") << QByteArray(R"({"doc":"4711"})");
    QTest::newRow("object around the list") << QByteArray(R"({"d":[{"doc":"4711"}]})");
    QTest::newRow("JSON text") << QByteArray(R"("4711")");
    QTest::newRow("number") << QByteArray("4711");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("list of numbers") << QByteArray("[1,2]");
    QTest::newRow("list of texts") << QByteArray(R"(["a"])");
    QTest::newRow("list of lists") << QByteArray("[[]]");
    QTest::newRow("list with a null") << QByteArray("[null]");
    QTest::newRow("one element not an object") << QByteArray(R"([{"doc":"4711"},7])");
    QTest::newRow("nested text") << QByteArray(R"([{"doc":["4711"]}])");
    QTest::newRow("object for a text") << QByteArray(R"([{"item":{"code":"a"}}])");
    QTest::newRow("list for a quantity") << QByteArray(R"([{"qty":[1]}])");
    QTest::newRow("nested header") << QByteArray(R"([{"brand":{}}])");
    QTest::newRow("two lists") << QByteArray("[] []");
    QTest::newRow("trailing garbage") << QByteArray(R"([{"doc":"4711"}]x)");
    QTest::newRow("trailing comma") << QByteArray(R"([{"doc":"4711"},])");
    QTest::newRow("trailing comma in an object") << QByteArray(R"([{"doc":"4711",}])");
    QTest::newRow("single quotes") << QByteArray("[{'doc':'4711'}]");
    QTest::newRow("key without quotes") << QByteArray(R"([{doc:"4711"}])");
    QTest::newRow("comment") << QByteArray("[/* none */]");
    QTest::newRow("raw line break in a string") << QByteArray("[{\"doc\":\"47\n11\"}]");
    QTest::newRow("unknown escape") << QByteArray("[{\"doc\":\"\\x41\"}]");
    QTest::newRow("half a surrogate pair") << QByteArray("[{\"doc\":\"\\ud83d\"}]");
    QTest::newRow("leading zero") << QByteArray(R"([{"qty":01}])");
    QTest::newRow("leading plus sign") << QByteArray(R"([{"qty":+1}])");
    QTest::newRow("not a number") << QByteArray(R"([{"qty":NaN}])");
    QTest::newRow("Latin-1") << QByteArray("[{\"descr\":\"caf\xE9\"}]");
    QTest::newRow("overlong slash") << QByteArray("[{\"doc\":\"\xC0\xAF\"}]");
    QTest::newRow("encoded surrogate") << QByteArray("[{\"doc\":\"\xED\xA0\x80\"}]");
    QTest::newRow("not UTF-8 in another key") << QByteArray("[{\"remark\":\"\xFF\"}]");
    QTest::newRow("trailing null byte") << QByteArray("[]\0", 3);
    QTest::newRow("UTF-16") << QByteArray("[\0]\0", 4);
    QTest::newRow("number beyond 64 bits") << QByteArray(R"([{"doc":123456789012345678901234}])");
    QTest::newRow("deep nesting") << QByteArray(100'000, '[') + QByteArray(100'000, ']');
    QTest::newRow("quantity beyond the range of a double") << QByteArray(R"([{"qty":1e999}])");
    QTest::newRow("bad number beside a huge one") << QByteArray(R"([{"remark":[1e999,01]}])");
    QTest::newRow("deep nesting without end in another key")
        << R"([{"remark":)" + QByteArray(100'000, '[') + "}]";
    QTest::newRow("deep nesting without end") << QByteArray(1'000'000, '[');
  }
  void aBodyThatIsNotAListOfObjectsIsRejected() {
    QFETCH(const QByteArray, body);
    QVERIFY(!parseDeliveryAnswer(body).has_value());
  }

  void anAnswerTruncatedAnywhereIsRejected() {
    const QByteArray body = kSmallAnswer;
    for (qsizetype size = 0; size < body.size(); ++size) {
      // A copy, so that the rest of the body does not follow in memory.
      const QByteArray part(body.constData(), size);
      QVERIFY2(!parseDeliveryAnswer(part).has_value(), part.constData());
    }
  }

  void aLongTextIsReadCompletely() {
    const QByteArray text(10'000, 'x');
    QCOMPARE(answerOf("{\"item\":\"" + text + "\"}")->lines.front().item,
             QString::fromLatin1(text));
  }

  void aLargeAnswerIsReadCompletely() {
    constexpr int kLines = 20'000;
    constexpr int kLinesOfABox = 7;
    QByteArray body = "[";
    for (int i = 0; i < kLines; ++i) {
      body += "{\"doc\":\"4711\",\"item\":\"I" + QByteArray::number(i) + "\",\"carton\":\"C" +
              QByteArray::number(i / kLinesOfABox) + "\",\"qty\":" + QByteArray::number(i) +
              (i + 1 < kLines ? "}," : "}]");
    }
    const auto answer = parseDeliveryAnswer(body);
    QCOMPARE(answer->lines.size(), std::size_t{kLines});
    for (int i = 0; i < kLines; ++i) {
      const OrderLine &line = answer->lines[static_cast<std::size_t>(i)];
      QCOMPARE(line.doc, "4711");
      QCOMPARE(line.item, "I" + QString::number(i));
      QCOMPARE(line.carton, "C" + QString::number(i / kLinesOfABox));
      QCOMPARE(line.qty.value(), i);
    }
  }

  void generatedAnswersAreReadLikeAnotherParserReadsThem() {
    Generator generator;
    int readable = 0;
    for (int i = 0; i < 3000; ++i) {
      const QByteArray body = generator.answer();
      const auto answer = parseDeliveryAnswer(body);
      readable += answer ? 1 : 0;
      QCOMPARE(textOf(answer), textOf(peer::parse(body)));
    }
    QVERIFY(readable > 1000);
    QVERIFY(readable < 3000);
  }

  void theJsonResultKeepsTheDeliveryNumber() {
    QCOMPARE(jsonResultOf(parseDeliveryAnswer(kSmallAnswer))->doc, "4711");
    QVERIFY(jsonResultOf(parseDeliveryAnswer("[]"))->doc.isNull());
    QVERIFY(!jsonResultOf(parseDeliveryAnswer("no JSON")).has_value());
  }
};

CARTONPICK_TEST(DeliveryAnswerTest);
#include "DeliveryAnswer_test.moc"
