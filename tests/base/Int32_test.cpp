#include "base/Int32.h"

#include "support/TestClass.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {
constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
}  // namespace

class Int32Test : public QObject {
  Q_OBJECT

 private slots:
  void aStringIsReadAsItsLeadingNumber_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::int32_t>("number");
    QTest::newRow("digits") << "42" << 42;
    QTest::newRow("minus") << "-42" << -42;
    QTest::newRow("plus") << "+42" << 42;
    QTest::newRow("leading zeros") << "00042" << 42;
    QTest::newRow("leading spaces") << "  42" << 42;
    QTest::newRow("leading tab and line end") << "\t\r\n42" << 42;
    QTest::newRow("space and sign") << " -42" << -42;
    QTest::newRow("trailing letters") << "42abc" << 42;
    QTest::newRow("trailing space") << "42 " << 42;
    QTest::newRow("decimal point") << "2.9" << 2;
    QTest::newRow("exponent") << "1e5" << 1;
    QTest::newRow("hexadecimal") << "0x10" << 0;
    QTest::newRow("thousands separator") << "1,234" << 1;
    QTest::newRow("two numbers") << "1 2" << 1;
    QTest::newRow("zero with a sign") << "-0" << 0;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("null") << QString() << 0;
    QTest::newRow("only spaces") << "   " << 0;
    QTest::newRow("sign alone") << "-" << 0;
    QTest::newRow("two signs") << "--5" << 0;
    QTest::newRow("plus and minus") << "+-5" << 0;
    QTest::newRow("sign and space") << "- 5" << 0;
    QTest::newRow("letters first") << "abc42" << 0;
    QTest::newRow("decimal point first") << ".5" << 0;
    QTest::newRow("digits of another script") << QStringLiteral("٤٢") << 0;
    QTest::newRow("trailing digit of another script") << QStringLiteral("4٢") << 4;
    QTest::newRow("slash, just below the digits") << "/1" << 0;
    QTest::newRow("colon, just above the digits") << ":1" << 0;
    QTest::newRow("maximum") << "2147483647" << kMax;
    QTest::newRow("above the maximum") << "2147483648" << kMax;
    QTest::newRow("minimum") << "-2147483648" << kMin;
    QTest::newRow("below the minimum") << "-2147483649" << kMin;
    QTest::newRow("far above the maximum") << QString(10'000, u'9') << kMax;
    QTest::newRow("far below the minimum") << u'-' + QString(10'000, u'9') << kMin;
    QTest::newRow("many leading zeros") << QString(10'000, u'0') + u'7' << 7;
  }
  void aStringIsReadAsItsLeadingNumber() {
    QFETCH(const QString, text);
    QFETCH(const std::int32_t, number);
    QCOMPARE(intValue(text), number);
  }

  void sumsWrapAround() {
    QCOMPARE(wrappingAdd(2, 3), 5);
    QCOMPARE(wrappingAdd(2, -3), -1);
    QCOMPARE(wrappingAdd(kMax, 1), kMin);
    QCOMPARE(wrappingAdd(kMin, -1), kMax);
    QCOMPARE(wrappingAdd(kMin, kMin), 0);
  }

  void differencesWrapAround() {
    QCOMPARE(wrappingSubtract(2, 3), -1);
    QCOMPARE(wrappingSubtract(2, -3), 5);
    QCOMPARE(wrappingSubtract(kMin, 1), kMax);
    QCOMPARE(wrappingSubtract(kMax, -1), kMin);
    QCOMPARE(wrappingSubtract(0, kMin), kMin);
  }

  void aNumberIsTruncatedAndClampedToTheRange() {
    QCOMPARE(clampToInt32(2.9), 2);
    QCOMPARE(clampToInt32(-2.9), -2);
    QCOMPARE(clampToInt32(2147483647.0), kMax);
    QCOMPARE(clampToInt32(2147483648.0), kMax);
    QCOMPARE(clampToInt32(-2147483649.0), kMin);
    QCOMPARE(clampToInt32(1e300), kMax);
    QCOMPARE(clampToInt32(-HUGE_VAL), kMin);
    QCOMPARE(clampToInt32(std::nan("")), 0);
  }
};

CARTONPICK_TEST(Int32Test);
#include "Int32_test.moc"
