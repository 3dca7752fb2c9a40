#include "picking/boxTableViewCell.h"

#include "support/TestClass.h"

#include <QTest>

class boxTableViewCellTest : public QObject {
  Q_OBJECT

 private slots:
  void theBackgroundHasTheColourOfTheState_data() {
    QTest::addColumn<int>("pickqty");
    QTest::addColumn<QString>("state");
    QTest::addColumn<Colour>("colour");
    QTest::newRow("not picked") << 0 << QStringLiteral("unopened") << Colour::yellow;
    QTest::newRow("partly picked") << 2 << QStringLiteral("incomplete") << Colour::red;
    QTest::newRow("picked exactly") << 5 << QStringLiteral("completed") << Colour::green;
  }
  void theBackgroundHasTheColourOfTheState() {
    QFETCH(int, pickqty);
    const BoxRecord box{.box = QStringLiteral("C1"), .boxorderqty = 5, .boxpickqty = pickqty};
    for (const int row : {0, 1}) {
      const auto cell = boxTableViewCell::ofEntry(box, row);
      QTEST(cell.backgroundColor, "colour");
      QTEST(cell.state, "state");
      QCOMPARE(cell.lblBox.text, "C1");
      QCOMPARE(cell.lblPickQty.text, QString::number(pickqty));
      QCOMPARE(cell.lblOrderQty.text, "5");
    }
  }
};

CARTONPICK_TEST(boxTableViewCellTest);
#include "boxTableViewCell_test.moc"
