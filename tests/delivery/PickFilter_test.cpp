#include "delivery/PickFilter.h"

#include "support/TestClass.h"

#include <QTest>

namespace {

using Positions = std::vector<std::size_t>;

}  // namespace

class PickFilterTest : public QObject {
  Q_OBJECT

 private slots:
  void aSegmentShowsTheMatchingLines_data() {
    QTest::addColumn<int>("segment");
    QTest::addColumn<Positions>("positions");
    QTest::newRow("all") << 0 << Positions{0, 1, 2, 3, 4};
    QTest::newRow("not picked") << 1 << Positions{0, 2};
    QTest::newRow("different") << 2 << Positions{0, 3, 4};
    QTest::newRow("matching") << 3 << Positions{1, 2};
    QTest::newRow("any higher index") << 9 << Positions{1, 2};
  }
  void aSegmentShowsTheMatchingLines() {
    QFETCH(int, segment);
    std::vector<BoxLine> lines;
    for (const auto &[pickqty, orderqty] :
         {std::pair(0, 5), std::pair(5, 5), std::pair(0, 0), std::pair(3, 2), std::pair(1, 2)}) {
      lines.push_back({.orderqty = orderqty, .pickqty = pickqty});
    }
    QTEST(linesShownBy(segment, lines), "positions");
  }

  void quantitiesAreComparedAsNumbers() {
    const BoxLine line{.orderqty = Quantity::delivered(QStringLiteral("5 pieces")), .pickqty = 5};
    QCOMPARE(linesShownBy(DifferentLines, {line}), Positions{});
    QCOMPARE(linesShownBy(DifferentLines + 1, {line}), Positions{0});
  }

  void anEmptyListShowsNoLines() {
    for (int segment = 0; segment < 4; ++segment) {
      QCOMPARE(linesShownBy(segment, {}), Positions{});
    }
  }
};

CARTONPICK_TEST(PickFilterTest);
#include "PickFilter_test.moc"
