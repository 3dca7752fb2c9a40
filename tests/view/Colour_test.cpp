#include "view/Colour.h"

#include "support/TestClass.h"

#include <QTest>

class ColourTest : public QObject {
  Q_OBJECT

 private slots:
  void everyColourHasItsName_data() {
    QTest::addColumn<Colour>("colour");
    QTest::addColumn<QString>("name");
    QTest::newRow("clear") << Colour::clear << "clear";
    QTest::newRow("black") << Colour::black << "black";
    QTest::newRow("blue") << Colour::blue << "blue";
    QTest::newRow("red") << Colour::red << "red";
    QTest::newRow("green") << Colour::green << "green";
    QTest::newRow("yellow") << Colour::yellow << "yellow";
    QTest::newRow("grey") << Colour::grey << "grey";
    QTest::newRow("lightGrey") << Colour::lightGrey << "lightGrey";
    QTest::newRow("darkGrey") << Colour::darkGrey << "darkGrey";
  }
  void everyColourHasItsName() {
    QFETCH(const Colour, colour);
    QFETCH(const QString, name);
    QCOMPARE(colourName(colour), name);
  }
};

CARTONPICK_TEST(ColourTest);
#include "Colour_test.moc"
