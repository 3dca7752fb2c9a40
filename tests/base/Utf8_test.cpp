#include "base/Utf8.h"

#include "support/TestClass.h"

#include <QTest>

class Utf8Test : public QObject {
  Q_OBJECT

 private slots:
  void decodingUtf8KeepsEveryCharacter_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("letters") << QStringLiteral("aéκ📦");
    QTest::newRow("U+0000") << QString(QChar(u'\0')) + u'a';
    QTest::newRow("U+FEFF alone") << QStringLiteral("\uFEFF");
    QTest::newRow("U+FEFF at the beginning") << QStringLiteral("\uFEFFa");
    QTest::newRow("U+FEFF twice") << QStringLiteral("\uFEFF\uFEFFa");
    QTest::newRow("U+FEFF in the middle") << QStringLiteral("a\uFEFFb");
  }

  void decodingUtf8KeepsEveryCharacter() {
    QFETCH(const QString, text);
    const QString read = textOfUtf8(text.toStdString());
    QCOMPARE(read, text);
    QVERIFY(!read.isNull());
  }

  void invalidUtf8IsRejected() {
    QVERIFY(!utf8Text("\xC0\xAF"));
    QVERIFY(!utf8Text("a\xE2\x82"));
    QCOMPARE(utf8Text("κ"), QStringLiteral("κ"));
  }
};

CARTONPICK_TEST(Utf8Test);
#include "Utf8_test.moc"
