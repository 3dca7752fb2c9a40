#include "delivery/CodePositions.h"

#include "support/TestClass.h"

#include <QTest>

namespace {

const QString kCode = QStringLiteral("77");

}  // namespace

class CodePositionsTest : public QObject {
  Q_OBJECT

 private slots:
  void theFirstLineWithTheBarcodeOrItemCodeIsFound() {
    const CodePositions positions({{.barcode = QStringLiteral("1"), .item = QStringLiteral("2")},
                                   {.barcode = QStringLiteral("3"), .item = kCode},
                                   {.barcode = kCode, .item = QStringLiteral("4")},
                                   {.barcode = QStringLiteral("3"), .item = QStringLiteral("2")}});
    QCOMPARE(positions.find(kCode), std::optional<std::size_t>(1));
    QCOMPARE(positions.find(QStringLiteral("1")), std::optional<std::size_t>(0));
    QCOMPARE(positions.find(QStringLiteral("2")), std::optional<std::size_t>(0));
    QCOMPARE(positions.find(QStringLiteral("3")), std::optional<std::size_t>(1));
    QCOMPARE(positions.find(QStringLiteral("777")), std::nullopt);
  }

  void codesAreCaseSensitive() {
    const CodePositions positions({{.barcode = kCode, .item = QStringLiteral("A")}});
    QCOMPARE(positions.find(QStringLiteral("a")), std::nullopt);
  }

  void anEmptyCodeMatchesALineWithAnEmptyCode() {
    const CodePositions positions(
        {{.barcode = kCode, .item = kCode}, {.barcode = QStringLiteral(""), .item = kCode}});
    QCOMPARE(positions.find(QString()), std::optional<std::size_t>(1));
  }
};

CARTONPICK_TEST(CodePositionsTest);
#include "CodePositions_test.moc"
