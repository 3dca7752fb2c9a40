#include "sending/SendPickBody.h"

#include "support/TestClass.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <limits>

namespace {

Picking pickOf(const QString &item) {
  return {.rowId = 7,
          .barcode = u'b' + item,
          .box = QStringLiteral("C1"),
          .datepicked = QDateTime(QDate(2026, 3, 2), QTime(8, 12, 5, 999), QTimeZone::utc()),
          .descr = QStringLiteral("HANGING HEART"),
          .doc = QStringLiteral("4711"),
          .item = item,
          .ordernum = QStringLiteral("A1"),
          .orderqty = 9,
          .pickqty = 3};
}

QByteArray bodyOf(const std::vector<Picking> &rows) {
  return sendPickBody(rows, QTimeZone("Europe/Athens"));
}

QJsonObject elementOf(const Picking &row) {
  return QJsonDocument::fromJson(bodyOf({row})).array().at(0).toObject();
}

}  // namespace

class SendPickBodyTest : public QObject {
  Q_OBJECT

 private slots:
  void anElementHasExactlyEightMembers() {
    QCOMPARE(elementOf(pickOf(QStringLiteral("A"))),
             QJsonObject({{"barcode", "bA"},
                          {"box", "C1"},
                          {"datepicked", "2026-03-02 10:12:05"},
                          {"doc", "4711"},
                          {"item", "A"},
                          {"ordernum", "A1"},
                          {"qty", 3},
                          {"sent", 0}}));
  }

  void quantitiesAreNumbers_data() {
    QTest::addColumn<int>("pickqty");
    QTest::newRow("zero") << 0;
    QTest::newRow("negative") << -2;
    QTest::newRow("maximum") << std::numeric_limits<int>::max();
    QTest::newRow("minimum") << std::numeric_limits<int>::min();
  }
  void quantitiesAreNumbers() {
    QFETCH(int, pickqty);
    Picking row = pickOf(QStringLiteral("A"));
    row.pickqty = pickqty;
    QVERIFY(elementOf(row).value(u"qty").isDouble());
    QCOMPARE(elementOf(row).value(u"qty").toInteger(), pickqty);
    QVERIFY(bodyOf({row}).contains("\"qty\": " + QByteArray::number(pickqty) + ','));
  }

  void elementsAreInTheOrderOfTheRows() {
    const QJsonArray elements =
        QJsonDocument::fromJson(bodyOf({pickOf(QStringLiteral("B")), pickOf(QStringLiteral("A")),
                                        pickOf(QStringLiteral("C"))}))
            .array();
    QStringList items;
    for (const auto element : elements) {
      items << element[u"item"].toString();
    }
    QCOMPARE(items, QStringList({"B", "A", "C"}));
  }

  void theBodyIsPrettyPrinted() {
    const QByteArray body = bodyOf({pickOf(QStringLiteral("A"))});
    QVERIFY(body.startsWith("[\n    {\n        \"barcode\": \"bA\",\n"));
    QVERIFY(body.endsWith("    }\n]\n"));
  }

  void pickTimesAreLocalBeforeAndAfterADaylightSavingChange_data() {
    QTest::addColumn<QDateTime>("utc");
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QString>("local");
    const QByteArray athens = "Europe/Athens";
    const auto utc = [](int month, int day, int hour) {
      return QDateTime(QDate(2026, month, day), QTime(hour, 30), QTimeZone::utc());
    };
    QTest::newRow("before the start of summer time")
        << utc(3, 29, 0) << athens << "2026-03-29 02:30:00";
    QTest::newRow("after the start of summer time")
        << utc(3, 29, 1) << athens << "2026-03-29 04:30:00";
    QTest::newRow("before the end of summer time")
        << utc(10, 25, 0) << athens << "2026-10-25 03:30:00";
    QTest::newRow("after the end of summer time")
        << utc(10, 25, 1) << athens << "2026-10-25 03:30:00";
    QTest::newRow("west of Greenwich")
        << utc(1, 1, 0) << QByteArray("America/New_York") << "2025-12-31 19:30:00";
  }
  void pickTimesAreLocalBeforeAndAfterADaylightSavingChange() {
    QFETCH(QDateTime, utc);
    QFETCH(QByteArray, zone);
    Picking row = pickOf(QStringLiteral("A"));
    row.datepicked = utc;
    const QJsonArray elements =
        QJsonDocument::fromJson(sendPickBody({row}, QTimeZone(zone))).array();
    QTEST(elements.at(0)[u"datepicked"].toString(), "local");
  }

  void quotesAndControlCharactersAreEscaped() {
    Picking row = pickOf(QStringLiteral("a\"b\\c\n\u0001;%1"));
    QCOMPARE(elementOf(row).value(u"item").toString(), row.item);
  }

  void theBodyIsTruncatedToItsLengthInUtf16Units_data() {
    QTest::addColumn<QString>("item");
    QTest::addColumn<int>("lost");
    QTest::newRow("ASCII") << QStringLiteral("A") << 0;
    QTest::newRow("two-byte letters") << QStringLiteral("ΑΒΓ") << 3;
    QTest::newRow("a three-byte sign") << QStringLiteral("€") << 2;
    QTest::newRow("four bytes, two UTF-16 units") << QStringLiteral("\U0001F4E6") << 2;
  }
  void theBodyIsTruncatedToItsLengthInUtf16Units() {
    QFETCH(QString, item);
    QFETCH(int, lost);
    const QByteArray plain = bodyOf({pickOf(QStringLiteral("A"))});
    const QByteArray body = bodyOf({pickOf(item)});
    // The item code and the barcode both contain `item`.
    const qsizetype whole = plain.size() + 2 * (item.toUtf8().size() - 1);
    QCOMPARE(body.size(), whole - 2 * lost);
    QVERIFY(plain.endsWith("\n    }\n]\n"));
    QCOMPARE(body.endsWith("\n]\n"), lost == 0);
  }

  void underTheCarefulRulesTheBodyIsWhole() {
    const Picking row = pickOf(QStringLiteral("ΑΒΓ €\U0001F4E6"));
    const QByteArray body =
        sendPickBody({row}, QTimeZone("Europe/Athens"), PickingRules::careful());
    QCOMPARE(QJsonDocument::fromJson(body).array().at(0)[u"item"].toString(), row.item);
    QVERIFY(body.endsWith("\n]\n"));
  }
};

CARTONPICK_TEST(SendPickBodyTest);
#include "SendPickBody_test.moc"
