#include "service/JsonValues.h"

#include "support/TestClass.h"

#include <QTest>

#include <limits>

namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

/// A parsed JSON value.
class Value {
 public:
  explicit Value(const QByteArray &json) : m_element(m_parser.parse(json.toStdString())) {}
  [[nodiscard]] simdjson::dom::element element() const { return m_element; }

 private:
  simdjson::dom::parser m_parser;
  simdjson::dom::element m_element;
};

}  // namespace

class JsonValuesTest : public QObject {
  Q_OBJECT

 private slots:
  void aValueIsReadAsTextAndAsQuantity_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::int32_t>("quantity");
    QTest::newRow("text") << QByteArray("\"abc\"") << "abc" << 0;
    QTest::newRow("empty text") << QByteArray("\"\"") << "" << 0;
    QTest::newRow("numeric text") << QByteArray("\"12\"") << "12" << 12;
    QTest::newRow("numeric text with spaces") << QByteArray("\" 12 \"") << " 12 " << 12;
    QTest::newRow("text that begins with a number") << QByteArray("\"-3x\"") << "-3x" << -3;
    QTest::newRow("large numeric text") << QByteArray("\"99999999999\"") << "99999999999" << kMax;
    QTest::newRow("escaped text") << QByteArray("\"a\\\"\\\\\\/\\n\\u00e9\\ud83d\\udce6\"")
                                  << QStringLiteral("a\"\\/\né📦") << 0;
    QTest::newRow("text with NUL")
        << QByteArray("\"a\\u0000b\"") << QStringLiteral("a") + QChar(u'\0') + u'b' << 0;
    QTest::newRow("text that begins with U+FEFF")
        << QByteArray("\"\\ufeff7\"") << QStringLiteral("\uFEFF7") << 0;
    QTest::newRow("UTF-8") << QByteArray("\"κ📦\"") << QStringLiteral("κ📦") << 0;
    QTest::newRow("integer") << QByteArray("12") << "12" << 12;
    QTest::newRow("negative") << QByteArray("-12") << "-12" << -12;
    QTest::newRow("zero") << QByteArray("0") << "0" << 0;
    QTest::newRow("maximum") << QByteArray("2147483647") << "2147483647" << kMax;
    QTest::newRow("above the maximum") << QByteArray("2147483648") << "2147483648" << kMax;
    QTest::newRow("below the minimum") << QByteArray("-2147483649") << "-2147483649" << kMin;
    QTest::newRow("largest 64-bit integer")
        << QByteArray("9223372036854775807") << "9223372036854775807" << kMax;
    QTest::newRow("largest unsigned 64-bit integer")
        << QByteArray("18446744073709551615") << "18446744073709551615" << kMax;
    QTest::newRow("fraction") << QByteArray("2.5") << "2.5" << 2;
    QTest::newRow("negative fraction") << QByteArray("-2.5") << "-2.5" << -2;
    QTest::newRow("integer with a decimal point") << QByteArray("3.0") << "3" << 3;
    QTest::newRow("exponent") << QByteArray("1e3") << "1000" << 1000;
    QTest::newRow("large exponent") << QByteArray("1e300") << "1e+300" << kMax;
    QTest::newRow("negative number with a large exponent")
        << QByteArray("-1e300") << "-1e+300" << kMin;
    QTest::newRow("true") << QByteArray("true") << "1" << 1;
    QTest::newRow("false") << QByteArray("false") << "0" << 0;
    QTest::newRow("null") << QByteArray("null") << "" << 0;
  }
  void aValueIsReadAsTextAndAsQuantity() {
    QFETCH(const QByteArray, json);
    QFETCH(const QString, text);
    QFETCH(const std::int32_t, quantity);
    const Value value(json);
    QCOMPARE(textOf(value.element()), text);
    QVERIFY(!textOf(value.element()).isNull());
    QCOMPARE(quantityOf(value.element()).value(), quantity);
    QCOMPARE(quantityOf(value.element()).text(), json == "null" ? QStringLiteral("0") : text);
  }

  void listsAndObjectsAreRejected_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty list") << QByteArray("[]");
    QTest::newRow("list") << QByteArray("[1]");
    QTest::newRow("empty object") << QByteArray("{}");
    QTest::newRow("object") << QByteArray(R"({"a":1})");
  }
  void listsAndObjectsAreRejected() {
    QFETCH(const QByteArray, json);
    const Value value(json);
    QVERIFY_THROWS_EXCEPTION(simdjson::simdjson_error, textOf(value.element()));
    QVERIFY_THROWS_EXCEPTION(simdjson::simdjson_error, quantityOf(value.element()));
  }
};

CARTONPICK_TEST(JsonValuesTest);
#include "JsonValues_test.moc"
