#include "delivery/PickRecords.h"

#include "support/TestClass.h"

#include <QTest>

namespace {

const PickEntry kBox = BoxRecord{.box = QStringLiteral("C1"),
                                 .boxorderqty = 7,
                                 .boxpickqty = 3,
                                 .boxitems = {BoxLine{.doc = QStringLiteral("4711")}}};
const PickEntry kLoose = LoosePick{.box = QStringLiteral("C2"),
                                   .doc = QStringLiteral("4712"),
                                   .ordernum = QStringLiteral("A1"),
                                   .qty = 5};

}  // namespace

class PickRecordsTest : public QObject {
  Q_OBJECT

 private slots:
  void aBoxReturnsTheValuesOfItsKeys() {
    QCOMPARE(boxOf(kBox), "C1");
    QCOMPARE(boxorderqtyOf(kBox), 7);
    QCOMPARE(boxpickqtyOf(kBox), 3);
    QCOMPARE(boxitemsOf(kBox).size(), 1U);
  }

  void aLoosePickReturnsTheValuesOfItsKeys() {
    QCOMPARE(boxOf(kLoose), "C2");
    QCOMPARE(ordernumOf(kLoose), "A1");
  }

  void aMissingKeyReadsAsZeroOrEmpty() {
    QVERIFY(ordernumOf(kBox).isNull());
    QCOMPARE(boxorderqtyOf(kLoose), 0);
    QCOMPARE(boxpickqtyOf(kLoose), 0);
    QVERIFY(boxitemsOf(kLoose).empty());
  }

  void aNewLineHasTheDefaultValues() {
    const BoxLine line;
    QCOMPARE(line.datepicked, "01/01/2001");
    QCOMPARE(line.pickqty.value(), 0);
    QCOMPARE(line.orderqty.value(), 0);
  }

  void theDeliveryNumberComesFromTheFirstLineOfTheFirstBox() {
    const PickEntry other = BoxRecord{.boxitems = {BoxLine{.doc = QStringLiteral("9999")}}};
    QCOMPARE(deliveryNumberOf({kBox, other, kLoose}), "4711");
    QCOMPARE(deliveryNumberOf({other, kBox}), "9999");
  }

  void withoutAFirstLineThereIsNoDeliveryNumber() {
    QVERIFY(deliveryNumberOf({}).isNull());
    QVERIFY(deliveryNumberOf({kLoose, kBox}).isNull());
    QVERIFY(deliveryNumberOf({BoxRecord{}, kBox}).isNull());
  }
};

CARTONPICK_TEST(PickRecordsTest);
#include "PickRecords_test.moc"
