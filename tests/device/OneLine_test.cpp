#include "device/OneLine.h"

#include "support/TestClass.h"

#include <QTest>

class OneLineTest : public QObject {
  Q_OBJECT

 private slots:
  void textWithoutLineBreaksIsUnchanged() {
    QCOMPARE(inOneLine("  4711 \"é\" 📦 ", u'_'), "  4711 \"é\" 📦 ");
    QCOMPARE(inOneLine("", u'_'), "");
  }

  void everyControlCharacterIsReplaced() {
    QCOMPARE(inOneLine("a\r\nb\tc", u' '), "a  b c");
    QCOMPARE(inOneLine(QStringLiteral("a\0b\x7F\u0085c"), u'_'), "a_b__c");
  }

  void lineAndParagraphSeparatorsAreReplaced() {
    QCOMPARE(inOneLine("a\u2028b\u2029c", u'_'), "a_b_c");
  }
};

CARTONPICK_TEST(OneLineTest);
#include "OneLine_test.moc"
