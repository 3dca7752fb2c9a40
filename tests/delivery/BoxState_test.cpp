#include "delivery/BoxState.h"

#include <QTest>

class BoxStateTest : public QObject {
  Q_OBJECT

 private slots:
  void aBoxIsClassedByWhatWasPickedAndOrdered_data() {
    QTest::addColumn<int>("pickqty");
    QTest::addColumn<int>("orderqty");
    QTest::addColumn<QString>("word");
    QTest::addColumn<Colour>("colour");
    const QString unopened = QStringLiteral("unopened");
    const QString completed = QStringLiteral("completed");
    const QString incomplete = QStringLiteral("incomplete");
    QTest::newRow("not picked") << 0 << 5 << unopened << Colour::yellow;
    QTest::newRow("picked in part") << 2 << 5 << incomplete << Colour::red;
    QTest::newRow("picked exactly") << 5 << 5 << completed << Colour::green;
    QTest::newRow("picked beyond its order") << 7 << 5 << incomplete << Colour::red;
    QTest::newRow("nothing ordered, nothing picked") << 0 << 0 << completed << Colour::green;
    QTest::newRow("nothing ordered, but picked") << 3 << 0 << incomplete << Colour::red;
    QTest::newRow("less than nothing picked") << -1 << 5 << incomplete << Colour::red;
    QTest::newRow("less than nothing ordered") << 0 << -2 << unopened << Colour::yellow;
  }
  void aBoxIsClassedByWhatWasPickedAndOrdered() {
    QFETCH(int, pickqty);
    QFETCH(int, orderqty);
    const BoxState state = boxStateOf(pickqty, orderqty);
    QTEST(wordFor(state), "word");
    QTEST(colourOf(state), "colour");
  }
};

QTEST_APPLESS_MAIN(BoxStateTest)
#include "BoxState_test.moc"
