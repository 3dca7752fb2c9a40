#include "service/ReadableJson.h"

#include "support/TestClass.h"

#include <QTest>

#include <simdjson.h>

namespace {

QByteArray readable(const QByteArray &text) {
  return QByteArray::fromStdString(readableArray(text.toStdString()));
}

QByteArray nested(int depth) {
  return QByteArray("{\"a\":[").repeated(depth) + "1e999" + QByteArray("]}").repeated(depth);
}

}  // namespace

class ReadableJsonTest : public QObject {
  Q_OBJECT

 private slots:
  void aReadableArrayIsCopied_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray(" [ ] ");
    QTest::newRow("empty objects") << QByteArray("[{}, { } ,{}]");
    QTest::newRow("numbers") << QByteArray(
        R"([{"a":0,"b":-0,"c":12,"d":-3.25,"e":1e2,"f":1E+2,"g":0.5e-7,"h":18446744073709551615}])");
    QTest::newRow("words") << QByteArray(R"([{"a":true,"b":false,"c":null}])");
    QTest::newRow("texts") << QByteArray(
        "[{\"a\":\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u00e9\\uD83D\\uDE00\",\"\":\"é]}\"}]");
    QTest::newRow("white space") << QByteArray("\n[\t{ \"a\"\r: 1 , \"b\" :\"x\" }\n]\n");
  }
  void aReadableArrayIsCopied() {
    QFETCH(const QByteArray, text);
    QCOMPARE(readable(text), text);
  }

  void aValueBeyondTheLimitsBecomesAnEmptyObject_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("large exponent") << QByteArray("1e999");
    QTest::newRow("large negative number") << QByteArray("-1E+400");
    QTest::newRow("beyond 64 bits") << QByteArray("18446744073709551616");
    QTest::newRow("400 digits") << QByteArray(400, '9');
    QTest::newRow("400 digits and a fraction") << QByteArray(400, '9') + ".5";
    QTest::newRow("half a surrogate pair") << QByteArray(R"("a\ud83db")");
    QTest::newRow("array") << QByteArray("[]");
    QTest::newRow("object") << QByteArray("{ }");
    QTest::newRow("array of values") << QByteArray("[1,\"],{\",[true,[]],{\"a\":{}},null]");
    QTest::newRow("object of values")
        << QByteArray("{\"a\":[{},1e999],\"b\":{\"c\":-1.5},\"d\":\"}\"}");
    QTest::newRow("deep nesting") << nested(5000);
    QTest::newRow("very deep nesting") << QByteArray(1000000, '[') + QByteArray(1000000, ']');
  }
  void aValueBeyondTheLimitsBecomesAnEmptyObject() {
    QFETCH(const QByteArray, value);
    const QByteArray text = R"([{"a":1,"b": % ,"c":"d"},{"a":%}])";
    QCOMPARE(readable(QByteArray(text).replace('%', value)), QByteArray(text).replace('%', "{}"));
  }

  void aKeyWithHalfASurrogatePairBecomesEmpty() {
    QCOMPARE(readable(R"([{"a\ud83d":1,"b":2}])"), R"([{"":1,"b":2}])");
  }

  void aTextThatIsNotAnArrayOfObjectsIsRejected_data() {
    QTest::addColumn<QByteArray>("text");
    const QList<QByteArray> texts{"",
                                  " ",
                                  "1",
                                  "{}",
                                  "[1]",
                                  "[[]]",
                                  "[null]",
                                  "[{}",
                                  "[{}]]",
                                  "[{}]x",
                                  "[{},]",
                                  "[,{}]",
                                  "[{}{}]",
                                  "[{]",
                                  "[}",
                                  "[{\"a\"}]",
                                  "[{\"a\":}]",
                                  "[{\"a\":1,}]",
                                  "[{,\"a\":1}]",
                                  "[{a:1}]",
                                  "[{1:1}]",
                                  "[{\"a\" 1}]",
                                  "[{\"a\":1 \"b\":2}]"};
    for (const QByteArray &text : texts) {
      QTest::newRow(text.isEmpty() ? "no text" : text.constData()) << text;
    }
    QTest::newRow("null character") << QByteArray("[{\"a\":1}\0]", 10);
  }
  void aTextThatIsNotAnArrayOfObjectsIsRejected() {
    QFETCH(const QByteArray, text);
    QVERIFY_THROWS_EXCEPTION(simdjson::simdjson_error, readable(text));
  }

  void anInvalidValueIsRejected_data() {
    QTest::addColumn<QByteArray>("value");
    const QList<QByteArray> values{"01",          "-",         "-01",
                                   "+1",          ".5",        "1.",
                                   "1.e5",        "1e",        "1e+",
                                   "1ee5",        "0x10",      "1_0",
                                   "NaN",         "tru",       "truex",
                                   "True",        "nulll",     "'a'",
                                   "\"a",         "\"\\x\"",   "\"\\\"",
                                   "\"\\u12G4\"", "\"\\u12\"", "\"a\nb\"",
                                   "\"\x1f\"",    "\"\xFF\"",  "\"\xED\xA0\x80\"",
                                   "\xC2\xA0",    "/**/1"};
    for (const QByteArray &value : values) {
      QTest::addRow("%s", value.toPercentEncoding().constData()) << value;
    }
    QTest::newRow("null character") << QByteArray("\0", 1);
    QTest::newRow("null character in a text") << QByteArray("\"\0\"", 3);
  }
  void anInvalidValueIsRejected() {
    QFETCH(const QByteArray, value);
    QVERIFY_THROWS_EXCEPTION(simdjson::simdjson_error, readable(R"([{"a":)" + value + "}]"));
    QVERIFY_THROWS_EXCEPTION(simdjson::simdjson_error, readable(R"([{"a":[[)" + value + "]]}]"));
    QVERIFY_THROWS_EXCEPTION(simdjson::simdjson_error,
                             readable(R"([{"a":[[1e999,)" + value + "]]}]"));
    QVERIFY_THROWS_EXCEPTION(simdjson::simdjson_error, readable(R"([{"a":{"b":)" + value + "}}]"));
  }

  void invalidNestingIsRejected_data() {
    QTest::addColumn<QByteArray>("value");
    const QList<QByteArray> values{"[",
                                   "{",
                                   "[}",
                                   "{]",
                                   "[[]",
                                   "[1,]",
                                   "[,1]",
                                   "[1 2]",
                                   "[1:2]",
                                   "{\"a\":1]",
                                   "{1}",
                                   "{\"a\"}",
                                   "{\"a\":1,}",
                                   "{,\"a\":1}",
                                   "[\"a\":1]",
                                   "{\"a\":{\"b\":1}",
                                   "{\"a\" \"b\"}",
                                   "[[],{},]",
                                   "[]]"};
    for (const QByteArray &value : values) {
      QTest::newRow(value.constData()) << value;
    }
    QTest::newRow("deep, one bracket too few") << nested(5000).chopped(1);
    QTest::newRow("deep, another bracket") << nested(5000).chopped(1) + ']';
  }
  void invalidNestingIsRejected() {
    QFETCH(const QByteArray, value);
    QVERIFY_THROWS_EXCEPTION(simdjson::simdjson_error, readable(R"([{"a":)" + value + "}]"));
  }

  void everyTruncatedArrayIsRejected() {
    const QByteArray text = R"([{"a":[1e999,{"b":"\u00e9"}],"c":-1.5e+3},{"d":null,"":true}])";
    QVERIFY(!readable(text).isEmpty());
    for (qsizetype size = 0; size < text.size(); ++size) {
      QVERIFY_THROWS_EXCEPTION(simdjson::simdjson_error, readable(text.first(size)));
    }
  }
};

CARTONPICK_TEST(ReadableJsonTest);
#include "ReadableJson_test.moc"
