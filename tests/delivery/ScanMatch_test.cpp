#include "delivery/ScanMatch.h"

#include "support/TestClass.h"

#include <QTest>
#include <QTimeZone>

namespace {

const QString kCode = QStringLiteral("77");

LoosePick loosePick(const QString &barcode, const QString &item) {
  return {.barcode = barcode, .box = barcode + item, .item = item, .qty = 4, .sent = 1};
}

}  // namespace

class ScanMatchTest : public QObject {
  Q_OBJECT

 private slots:
  void aLoosePickIsFoundByBarcodeOrItemCode() {
    const PickList list{BoxRecord{kCode, 1, 1, {{.barcode = kCode, .item = kCode}}},
                        loosePick(QStringLiteral("1"), kCode),
                        loosePick(kCode, QStringLiteral("2"))};
    QCOMPARE(loosePickWithCode(list, kCode)->box, "177");
    QCOMPARE(loosePickWithCode(list, QStringLiteral("2"))->box, "772");
    QCOMPARE(loosePickWithCode(list, QStringLiteral("3")), nullptr);
  }

  void aBoxIsNeverMatchedAsALoosePick() {
    const PickList list{BoxRecord{kCode, 1, 1, {{.barcode = kCode, .item = kCode}}}};
    QCOMPARE(loosePickWithCode(list, kCode), nullptr);
  }

  void aLoosePickWithoutACodeIsNotFoundByAnEmptyCode() {
    const QString empty = QStringLiteral("");
    QCOMPARE(loosePickWithCode({loosePick({}, kCode), loosePick(kCode, {})}, empty), nullptr);
    QCOMPARE(loosePickWithCode({loosePick({}, {}), loosePick(empty, kCode)}, empty)->item, kCode);
  }

  void aRepeatedLoosePickHasTheCurrentTimeAndNoQuantity() {
    const QDateTime now(QDate(2026, 3, 2), QTime(8, 12, 5), QTimeZone::utc());
    const LoosePick again = loosePickAgain(loosePick(kCode, QStringLiteral("2")), now);
    QCOMPARE(again.barcode, kCode);
    QCOMPARE(again.box, "772");
    QCOMPARE(again.datepicked, now);
    QCOMPARE(again.qty, 0);
    QCOMPARE(again.sent, 0);
  }

  void withAnEmptyListALoosePickHasNoOrderNumber() {
    const Items article{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("MUG")};
    const LoosePick loose = loosePickOf(article, QStringLiteral("4711"), {}, {});
    QVERIFY(loose.ordernum.isNull());
    QCOMPARE(loose.box, "1");
    QCOMPARE(loose.doc, "4711");
  }
};

CARTONPICK_TEST(ScanMatchTest);
#include "ScanMatch_test.moc"
