#include "delivery/Quantity.h"

#include "support/TestClass.h"

#include <QTest>

class QuantityTest : public QObject {
  Q_OBJECT

 private slots:
  void aDefaultQuantityIsZero() {
    QCOMPARE(Quantity().value(), 0);
    QCOMPARE(Quantity().text(), "0");
    QCOMPARE(Quantity(), Quantity(0));
    QVERIFY(Quantity::delivered(QStringLiteral("")) != Quantity(0));
  }

  void aNumberIsShownAsDigits() {
    QCOMPARE(Quantity(-7).value(), -7);
    QCOMPARE(Quantity(-7).text(), "-7");
  }

  void aDeliveredTextIsShownUnchanged() {
    const Quantity quantity = Quantity::delivered(QStringLiteral(" 007 pieces"));
    QCOMPARE(quantity.value(), 7);
    QCOMPARE(quantity.text(), " 007 pieces");
    QVERIFY(!(quantity == Quantity(7)));
  }

  void aDeliveredNumberIsShownUnchanged() {
    const Quantity quantity = Quantity::delivered(2, QStringLiteral("2.5"));
    QCOMPARE(quantity.value(), 2);
    QCOMPARE(quantity.text(), "2.5");
  }
};

CARTONPICK_TEST(QuantityTest);
#include "Quantity_test.moc"
