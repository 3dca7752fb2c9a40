#include "delivery/BoxState.h"

#include "support/TestClass.h"

#include <QTest>

class BoxStateTest : public QObject {
  Q_OBJECT

 private slots:
  void aBoxIsClassifiedByItsPickedAndOrderedQuantities_data() {
    QTest::addColumn<int>("pickqty");
    QTest::addColumn<int>("orderqty");
    QTest::addColumn<QString>("word");
    const QString unopened = QStringLiteral("unopened");
    const QString completed = QStringLiteral("completed");
    const QString incomplete = QStringLiteral("incomplete");
    QTest::newRow("not picked") << 0 << 5 << unopened;
    QTest::newRow("partly picked") << 2 << 5 << incomplete;
    QTest::newRow("picked exactly") << 5 << 5 << completed;
    QTest::newRow("more picked than ordered") << 7 << 5 << incomplete;
    QTest::newRow("nothing ordered, nothing picked") << 0 << 0 << completed;
    QTest::newRow("nothing ordered, but picked") << 3 << 0 << incomplete;
    QTest::newRow("negative quantity picked") << -1 << 5 << incomplete;
    QTest::newRow("negative quantity ordered") << 0 << -2 << unopened;
  }
  void aBoxIsClassifiedByItsPickedAndOrderedQuantities() {
    QFETCH(int, pickqty);
    QFETCH(int, orderqty);
    QTEST(wordFor(boxStateOf(pickqty, orderqty)), "word");
  }

  void theCountersCountBoxesByStateAndLoosePicksAsCompleted() {
    const PickList list{BoxRecord{.boxorderqty = 5},
                        BoxRecord{.boxorderqty = 5},
                        BoxRecord{.boxorderqty = 5},
                        BoxRecord{.boxorderqty = 5, .boxpickqty = 5},
                        BoxRecord{.boxorderqty = 5, .boxpickqty = 7},
                        BoxRecord{.boxorderqty = 5, .boxpickqty = 2},
                        LoosePick{.qty = 4}};
    const BoxCounters counters = countersOf(list);
    QCOMPARE(counters.total, 7U);
    QCOMPARE(counters.unopened, 3U);
    QCOMPARE(counters.completed, 2U);
    QCOMPARE(counters.incomplete, 2U);
  }
};

CARTONPICK_TEST(BoxStateTest);
#include "BoxState_test.moc"
