#include "service/CatalogueAnswer.h"

#include "support/TestClass.h"

#include <QTest>

#include <string>

namespace {

QString shown(const std::optional<std::string> &text) {
  return text ? QString::fromStdString(*text) : QStringLiteral("-");
}

/// Returns the articles in `body`, each as "barcode/item/descr" with "-" for a missing string, or
/// std::nullopt if it cannot be read.
std::optional<QStringList> articlesOf(const QByteArray &body) {
  auto answer = CatalogueAnswer::read(body);
  if (!answer) {
    return std::nullopt;
  }
  QStringList articles;
  answer->forEachArticle([&](const Article &article) {
    articles.append(shown(article.barcode) + u'/' + shown(article.item) + u'/' +
                    shown(article.descr));
    return true;
  });
  return articles;
}

QByteArray elementOf(const QByteArray &item) {
  return QByteArray(R"({"item":"%"})").replace('%', item);
}

/// Returns an element that is longer than the pieces in which an answer is read.
QByteArray longElement() {
  return elementOf(QByteArray(300000, 'x'));
}

}  // namespace

class CatalogueAnswerTest : public QObject {
  Q_OBJECT

 private slots:
  void articlesAreReadInOrder() {
    const auto articles = articlesOf(R"( [ {"barcode":"b1","item":"A","descr":"One"},
                                           {"descr":"Two","item":"B","barcode":"b2"} ] )");
    QCOMPARE(articles, QStringList({"b1/A/One", "b2/B/Two"}));
  }

  void aByteOrderMarkIsSkipped() {
    const auto answer = CatalogueAnswer::read("\xEF\xBB\xBF[{\"item\":\"A\"}]");
    QVERIFY(answer);
    QCOMPARE(answer->articleCount(), 1U);
  }

  void anEmptyArrayIsAnEmptyCatalogue() {
    const auto answer = CatalogueAnswer::read("[]");
    QVERIFY(answer);
    QCOMPARE(answer->articleCount(), 0U);
    QVERIFY(answer->jsonResult().doc.isNull());
  }

  void aRepeatedArticleIsReadTwice() {
    QCOMPARE(articlesOf(R"([{"item":"A"},{"item":"A"}])"), QStringList({"-/A/-", "-/A/-"}));
  }

  void aValueIsReadAsText_data() {
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<QString>("article");
    QTest::newRow("empty object") << QByteArray("{}") << "-/-/-";
    QTest::newRow("no item") << QByteArray(R"({"barcode":"b","descr":"d"})") << "b/-/d";
    QTest::newRow("empty texts") << QByteArray(R"({"item":"","barcode":"","descr":""})") << "//";
    QTest::newRow("null") << QByteArray(R"({"item":null,"descr":"d"})") << "-/-/d";
    QTest::newRow("integer") << QByteArray(R"({"item":12,"barcode":-3})") << "-3/12/-";
    QTest::newRow("large integer")
        << QByteArray(R"({"item":18446744073709551615})") << "-/18446744073709551615/-";
    QTest::newRow("fraction") << QByteArray(R"({"item":1.5})") << "-/1.5/-";
    QTest::newRow("boolean") << QByteArray(R"({"item":true,"descr":false})") << "-/1/0";
    QTest::newRow("repeated key") << QByteArray(R"({"item":"A","item":"B"})") << "-/B/-";
    QTest::newRow("other keys") << QByteArray(
                                       R"({"ITEM":"x","price":{"EUR":[1,2.5e3,null]},"item":"A"})")
                                << "-/A/-";
    QTest::newRow("any value of other keys")
        << R"({"price":1e999,"item":"A","weight":)" + QByteArray(400, '9') + R"(,"x":)" +
               QByteArray(5000, '[') + QByteArray(5000, ']') + R"(,"barcode":"b"})"
        << "b/A/-";
    QTest::newRow("escapes") << elementOf(R"(\"\"\\\/\u00e9\ud83d\ude00\n)")
                             << QStringLiteral("-/\"\"\\/é😀\n/-");
    QTest::newRow("plain UTF-8") << QByteArray("{\"item\":\"Ωμέγα 😀; DROP TABLE 100%'\"}")
                                 << QStringLiteral("-/Ωμέγα 😀; DROP TABLE 100%'/-");
    QTest::newRow("null character")
        << QByteArray(R"({"item":"a\u0000b"})") << "-/" + QString::fromUtf16(u"a\0b", 3) + "/-";
    QTest::newRow("10,000 characters")
        << elementOf(QByteArray(10000, 'q')) << "-/" + QString(10000, u'q') + "/-";
  }
  void aValueIsReadAsText() {
    QFETCH(const QByteArray, element);
    QFETCH(const QString, article);
    QCOMPARE(articlesOf('[' + element + ']'), QStringList(article));
  }

  void aBodyThatIsNotAnArrayOfObjectsIsRejected_data() {
    QTest::addColumn<QByteArray>("body");
    const QByteArray element = longElement();
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("only white space") << QByteArray("  \n");
    QTest::newRow("HTML page") << QByteArray("<html><body>Bad gateway</body></html>");
    QTest::newRow("object") << QByteArray(R"({"item":"A"})");
    QTest::newRow("number") << QByteArray("12");
    QTest::newRow("text") << QByteArray("\"[]\"");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("array of numbers") << QByteArray("[1]");
    QTest::newRow("array of arrays") << QByteArray("[[]]");
    QTest::newRow("null element") << QByteArray(R"([{"item":"A"},null])");
    QTest::newRow("text element") << QByteArray(R"([{"item":"A"},"B"])");
    QTest::newRow("nested item") << QByteArray(R"([{"item":{"code":"A"}}])");
    QTest::newRow("nested barcode") << QByteArray(R"([{"barcode":["1"]}])");
    QTest::newRow("nested description") << QByteArray(R"([{"item":"A"},{"descr":[]}])");
    QTest::newRow("trailing comma") << QByteArray(R"([{"item":"A"},])");
    QTest::newRow("leading comma") << QByteArray(R"([,{"item":"A"}])");
    QTest::newRow("missing comma") << QByteArray(R"([{"item":"A"}{"item":"B"}])");
    QTest::newRow("trailing garbage") << QByteArray(R"([{"item":"A"}]x)");
    QTest::newRow("two arrays") << QByteArray("[][]");
    QTest::newRow("mismatched brackets") << QByteArray(R"([{"item":"A"]})");
    QTest::newRow("bad value of another key") << QByteArray(R"([{"item":"A","x":tru}])");
    QTest::newRow("bad number of another key") << QByteArray(R"([{"item":"A","x":[01]}])");
    QTest::newRow("bad value beside a huge number")
        << QByteArray(R"([{"item":"A","x":1e999,"y":[tru]}])");
    QTest::newRow("number beyond 64 bits") << QByteArray(R"([{"item":18446744073709551616}])");
    QTest::newRow("bad escape of another key") << QByteArray(R"([{"item":"A","x":"\q"}])");
    QTest::newRow("bare line feed") << QByteArray("[{\"item\":\"A\nB\"}]");
    QTest::newRow("half a surrogate pair") << QByteArray(R"([{"item":"\ud83d"}])");
    QTest::newRow("not UTF-8") << QByteArray("[{\"item\":\"\xE9t\xE9\"}]");
    QTest::newRow("not UTF-8 in another key") << QByteArray("[{\"item\":\"A\",\"\xFF\":1}]");
    QTest::newRow("truncated UTF-8") << QByteArray("[{\"item\":\"\xC3\"}]");
    QTest::newRow("long, trailing comma") << '[' + element + ",]";
    QTest::newRow("long, two commas") << '[' + element + ",," + element + ']';
    QTest::newRow("long, leading comma") << '[' + QByteArray(300000, ' ') + ',' + element + ']';
    QTest::newRow("long, unfinished") << '[' + element + ',' + element;
    QTest::newRow("long, closed too early") << '[' + element + "]," + element + ']';
    QTest::newRow("long, trailing garbage") << '[' + element + ',' + element + "],{}";
    QTest::newRow("long, object") << R"({"a":)" + element + R"(,"b":)" + element + '}';
    QTest::newRow("long, without brackets") << element + ',' + element;
    QTest::newRow("long, mismatched brackets") << '[' + element + ',' + element + '}';
    QTest::newRow("long, last element not an object") << '[' + element + ',' + element + ",1]";
    QTest::newRow("long, unterminated string") << '[' + element + R"(,{"item":"A\"},{}])";
  }
  void aBodyThatIsNotAnArrayOfObjectsIsRejected() {
    QFETCH(const QByteArray, body);
    QVERIFY(!CatalogueAnswer::read(body));
  }

  void everyTruncatedAnswerIsRejected() {
    const QByteArray body = R"([{"barcode":"b","item":"Ä\\1","descr":null},{"item":2}])";
    QVERIFY(CatalogueAnswer::read(body));
    for (qsizetype size = 0; size < body.size(); ++size) {
      QVERIFY2(!CatalogueAnswer::read(body.first(size)), qPrintable(QString::number(size)));
    }
  }

  void aLongAnswerIsReadCompletely() {
    constexpr int kCount = 30000;
    const QByteArray confusing = R"(],[{\"item\":1},{\\)";
    const QByteArray element =
        QByteArray(R"({"x":[{},[1,2]],"descr":"~","item":"%"}, )").replace('~', confusing);
    QByteArray body = "[";
    for (int i = 0; i < kCount; ++i) {
      body += QByteArray(element).replace('%', QByteArray::number(i));
    }
    auto answer = CatalogueAnswer::read(body.chopped(2) + ']');
    QVERIFY(answer);
    QCOMPARE(answer->articleCount(), std::size_t{kCount});
    int next = 0;
    const bool areAllAsSent = answer->forEachArticle([&](const Article &article) {
      return article.item == std::to_string(next++) && article.descr == R"(],[{"item":1},{\)";
    });
    QVERIFY(areAllAsSent);
    QCOMPARE(next, kCount);
  }

  void otherKeysOfALongAnswerMayHaveAnyValue() {
    const QByteArray element =
        R"({"x":1e999,"item":"A","y":[)" + QByteArray(5000, '[') + QByteArray(5000, ']') + "]}";
    constexpr int kCount = 100;
    const auto articles = articlesOf('[' + (element + ',').repeated(kCount) + longElement() + ']');
    QVERIFY(articles);
    QCOMPARE(articles->size(), kCount + 1);
    QCOMPARE(articles->count("-/A/-"), kCount);
  }

  void anElementCanBeLongerThanAPiece() {
    const QByteArray element = longElement();
    const auto articles = articlesOf('[' + element + ',' + element + ",{}]");
    QVERIFY(articles);
    QCOMPARE(articles->size(), 3);
    QCOMPARE(articles->at(1).size(), 300004);
    QCOMPARE(articles->at(2), "-/-/-");
  }

  void forEachArticleStopsWhenItsVisitorReturnsFalse() {
    auto answer = CatalogueAnswer::read(R"([{"item":"A"},{"item":"B"},{"item":"C"}])");
    int visited = 0;
    QVERIFY(!answer->forEachArticle([&](const Article &) { return ++visited < 2; }));
    QCOMPARE(visited, 2);
  }

  void theDeliveryNumberOfTheFirstElementIsKept_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("doc");
    QTest::newRow("articles have none") << QByteArray(R"([{"item":"A"}])") << QString();
    QTest::newRow("first has one") << QByteArray(R"([{"doc":"4711"},{"doc":"2"}])") << "4711";
    QTest::newRow("second has one") << QByteArray(R"([{},{"doc":"2"}])") << QString();
    QTest::newRow("number") << QByteArray(R"([{"doc":4711}])") << "4711";
    QTest::newRow("nested") << QByteArray(R"([{"doc":["4711"]}])") << QString();
    QTest::newRow("huge number") << QByteArray(R"([{"doc":1e999}])") << QString();
  }
  void theDeliveryNumberOfTheFirstElementIsKept() {
    QFETCH(const QByteArray, body);
    QFETCH(const QString, doc);
    const auto answer = CatalogueAnswer::read(body);
    QVERIFY(answer);
    QCOMPARE(answer->jsonResult().doc, doc);
    QCOMPARE(answer->jsonResult().doc.isNull(), doc.isNull());
  }
};

CARTONPICK_TEST(CatalogueAnswerTest);
#include "CatalogueAnswer_test.moc"
