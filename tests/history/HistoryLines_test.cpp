#include "history/HistoryLines.h"

#include "support/TestClass.h"

#include <QTest>
#include <QTimeZone>

#include <limits>

namespace {

Picking rowOf(const QString &item, int pickqty, int orderqty,
              const QString &box = QStringLiteral("C1")) {
  return {.barcode = box + item,
          .box = box,
          .datepicked = QDateTime(QDate(2026, 3, 2), QTime(8, 12, 5), QTimeZone::utc()),
          .descr = box + QStringLiteral(" description"),
          .doc = QStringLiteral("4711"),
          .item = item,
          .ordernum = box + QStringLiteral(" order"),
          .orderqty = orderqty,
          .pickqty = pickqty};
}

/// Returns "item pick/order" for each line.
QStringList textsOf(const ItemLines &lines) {
  QStringList texts;
  for (const BoxLine &line : lines) {
    texts << QStringLiteral("%1 %2/%3").arg(line.item, line.pickqty.text(), line.orderqty.text());
  }
  return texts;
}

}  // namespace

class HistoryLinesTest : public QObject {
  Q_OBJECT

 private slots:
  void withoutRowsThereAreNoLines() { QVERIFY(historyLines({}).empty()); }

  void itemsAreInTheOrderOfTheirFirstRows() {
    const QString b = QStringLiteral("B");
    QCOMPARE(textsOf(historyLines({rowOf(b, 1, 2), rowOf(QStringLiteral("A"), 3, 4),
                                   rowOf(QStringLiteral("b"), 5, 6)})),
             QStringList({"B 1/2", "A 3/4", "b 5/6"}));
  }

  void laterRowsAddTheirPickedQuantityToTheOrderedQuantity() {
    const QString a = QStringLiteral("A");
    QCOMPARE(textsOf(historyLines({rowOf(a, 3, 10), rowOf(a, 4, 100, QStringLiteral("C2")),
                                   rowOf(a, 5, 1000, QStringLiteral("C3"))})),
             QStringList("A 3/19"));
  }

  void underTheCarefulRulesBothQuantitiesAreSums() {
    const QString a = QStringLiteral("A");
    QCOMPARE(textsOf(historyLines(
                 {rowOf(a, 3, 10), rowOf(a, 4, 100, QStringLiteral("C2")),
                  rowOf(QStringLiteral("B"), 1, 2), rowOf(a, 5, 1000, QStringLiteral("C3"))},
                 PickingRules::careful())),
             QStringList({"A 12/1110", "B 1/2"}));
  }

  void aLineKeepsTheDetailsOfItsFirstRow() {
    const QString a = QStringLiteral("A");
    const BoxLine line =
        historyLines({rowOf(a, 3, 10), rowOf(a, 4, 9, QStringLiteral("C2"))}).at(0);
    QCOMPARE(QStringList({line.barcode, line.descr, line.doc, line.item, line.ordernum}),
             QStringList({"C1A", "C1 description", "4711", "A", "C1 order"}));
    QCOMPARE(QDateTime::fromString(line.datepicked, Qt::ISODateWithMs),
             QDateTime(QDate(2026, 3, 2), QTime(8, 12, 5), QTimeZone::utc()));
  }

  void sumsWrapAround() {
    const QString a = QStringLiteral("A");
    QCOMPARE(textsOf(historyLines({rowOf(a, 3, std::numeric_limits<int>::max()), rowOf(a, 1, 9)})),
             QStringList("A 3/-2147483648"));
  }
};

CARTONPICK_TEST(HistoryLinesTest);
#include "HistoryLines_test.moc"
