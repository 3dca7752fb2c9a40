#include "app/IconProvider.h"

#include "support/TestClass.h"

#include <QTest>

class IconProviderTest : public QObject {
  Q_OBJECT

 private slots:
  void anIconIsDrawnInTheRequestedColour_data() {
    QTest::addColumn<QString>("colour");
    QTest::addColumn<QColor>("drawn");
    QTest::newRow("green") << "00ff00" << QColor(0, 255, 0);
    QTest::newRow("blue") << "0000ff" << QColor(0, 0, 255);
  }

  void anIconIsDrawnInTheRequestedColour() {
    QFETCH(const QString, colour);
    QFETCH(const QColor, drawn);
    QSize size;
    const QImage icon = m_icons.requestImage("completed/" + colour, &size, {48, 48});
    QCOMPARE(icon.size(), QSize(48, 48));
    QCOMPARE(size, QSize(48, 48));
    QCOMPARE(icon.pixelColor(24, 6), drawn);
    QCOMPARE(icon.pixelColor(0, 0).alpha(), 0);
  }

  void withoutARequestedSizeAnIconHasItsDefaultSize() {
    QSize size;
    QVERIFY(!m_icons.requestImage("refused/000000", &size, {}).isNull());
    QCOMPARE(size, QSize(24, 24));
  }

  void anUnknownIconIsANullImage() {
    QSize size;
    QVERIFY(m_icons.requestImage("nothing/000000", &size, {48, 48}).isNull());
  }

 private:
  IconProvider m_icons;
};

CARTONPICK_WINDOW_TEST(IconProviderTest);
#include "IconProvider_test.moc"
