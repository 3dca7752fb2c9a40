#include "service/JsonPieces.h"

#include "service/JsonValues.h"
#include "support/TestClass.h"

#include <QTest>

namespace {

/// Returns an array of the numbers below `count`, each with a string that looks like the end of an
/// element.
QByteArray numbers(int count) {
  QByteArray text;
  for (int i = 0; i < count; ++i) {
    text += (i == 0 ? "[{\"n\":" : ", {\"n\":") + QByteArray::number(i) + ",\"t\":\"],{,[\\\"\"}";
  }
  return text + ']';
}

/// Returns the number of elements, or 0 if they are not numbered from 0 in order.
std::size_t countOf(const JsonPieces &pieces) {
  JsonPieces::Reader reader(pieces);
  std::size_t count = 0;
  for (std::size_t i = 0; i < pieces.count(); ++i) {
    for (const simdjson::dom::element element : reader.read(i)) {
      if (element["n"].get_uint64().value() != count) {
        return 0;
      }
      ++count;
    }
  }
  return count;
}

}  // namespace

class JsonPiecesTest : public QObject {
  Q_OBJECT

 private slots:
  void aSmallArrayIsOnePiece() {
    const QByteArray text = numbers(3);
    const JsonPieces pieces(jsonTextOf(text));
    QCOMPARE(pieces.count(), 1U);
    QCOMPARE(countOf(pieces), 3U);
  }

  void aLargeArrayIsReadCompletelyAndInOrder() {
    const QByteArray text = numbers(50'000);
    const JsonPieces pieces(jsonTextOf(text));
    QVERIFY(pieces.count() > 3);
    QCOMPARE(countOf(pieces), 50'000U);
  }

  void aPieceCanBeASingleElement() {
    const QByteArray text = numbers(7);
    const JsonPieces pieces(jsonTextOf(text), 1);
    QCOMPARE(pieces.count(), 7U);
    QCOMPARE(countOf(pieces), 7U);
  }

  void readingAPieceThatIsNotJsonThrows() {
    QByteArray text = numbers(50'000);
    text.insert(text.indexOf("{\"n\"", text.size() / 2), '!');
    const JsonPieces pieces(jsonTextOf(text));
    QVERIFY_THROWS_EXCEPTION(simdjson::simdjson_error, countOf(pieces));
  }
};

CARTONPICK_TEST(JsonPiecesTest);
#include "JsonPieces_test.moc"
