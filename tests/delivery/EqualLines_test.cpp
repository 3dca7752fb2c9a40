#include "delivery/EqualLines.h"

#include "support/TestClass.h"

#include <QTest>

namespace {

BoxLine lineOf(const QString &item, int pickqty, int orderqty) {
  return {
      .barcode = QString::number(orderqty), .item = item, .orderqty = orderqty, .pickqty = pickqty};
}

/// Two lines of A and one of B; `first` and `second` pieces are picked of the lines of A.
std::vector<BoxLine> linesWith(int first, int second) {
  return {lineOf(QStringLiteral("B"), 0, 1), lineOf(QStringLiteral("A"), first, 6),
          lineOf(QStringLiteral("A"), second, 4)};
}

}  // namespace

class EqualLinesTest : public QObject {
  Q_OBJECT

 private slots:
  void theFirstLineOfAnItemIsFound() {
    QCOMPARE(firstLineOf(QStringLiteral("A"), linesWith(0, 0)), std::optional<std::size_t>(1));
    QVERIFY(!firstLineOf(QStringLiteral("a"), linesWith(0, 0)));
  }

  void theFirstLineThatIsNotFullIsFilled_data() {
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::addColumn<int>("line");
    QTest::newRow("nothing is picked") << 0 << 0 << 1;
    QTest::newRow("the first is not full") << 5 << 4 << 1;
    QTest::newRow("the first is full") << 6 << 0 << 2;
    QTest::newRow("the first has too much") << 7 << 3 << 2;
    QTest::newRow("both are full") << 6 << 4 << 2;
  }
  void theFirstLineThatIsNotFullIsFilled() {
    QFETCH(int, first);
    QFETCH(int, second);
    QTEST(static_cast<int>(lineToFill(QStringLiteral("A"), linesWith(first, second))), "line");
  }

  void theSumHasTheDetailsOfTheFirstLine() {
    const BoxLine sum = sumOfLines(QStringLiteral("A"), linesWith(5, 3));
    QCOMPARE(sum.barcode, "6");
    QCOMPARE(sum.orderqty.value(), 10);
    QCOMPARE(sum.pickqty.value(), 8);
  }

  void theSumOfOneLineIsThatLine() {
    const BoxLine sum = sumOfLines(QStringLiteral("B"), linesWith(5, 3));
    QCOMPARE(sum.orderqty.value(), 1);
    QCOMPARE(sum.pickqty.value(), 0);
  }
};

CARTONPICK_TEST(EqualLinesTest);
#include "EqualLines_test.moc"
