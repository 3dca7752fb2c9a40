#include "device/MailFileName.h"

#include "support/TestClass.h"

#include <QTest>

class MailFileNameTest : public QObject {
  Q_OBJECT

 private slots:
  void anOrdinaryNameIsUnchanged() {
    QCOMPARE(attachmentFileName("Vardex_4711 \"é\": 50% <b>.csv"),
             "Vardex_4711 \"é\": 50% <b>.csv");
  }

  void pathSeparatorsAreReplaced() {
    QCOMPARE(attachmentFileName("Vardex_../..\\4711.csv"), "Vardex_.._.._4711.csv");
  }

  void lineBreaksAndControlCharactersAreReplaced() {
    QCOMPARE(attachmentFileName(QStringLiteral("a\r\n\t\0\x7F\u0085\u2028\u2029.csv")),
             "a________.csv");
  }

  void separatorsAreReplacedNextToUnpairedSurrogates() {
    QCOMPARE(attachmentFileName(QChar(0xD83D) + QString("/.csv")),
             QChar(0xD83D) + QString("_.csv"));
  }

  void aNameOf255BytesIsUnchanged() {
    const QString name = QStringLiteral("x").repeated(251) + ".csv";
    QCOMPARE(attachmentFileName(name), name);
  }

  void aLongerNameLosesItsMiddle() {
    const QString name = attachmentFileName(QStringLiteral("x").repeated(252) + ".csv");
    QCOMPARE(name,
             QStringLiteral("x").repeated(42) + u'…' + QStringLiteral("x").repeated(38) + ".csv");
  }

  void surrogatePairsAreNotSplit_data() {
    QTest::addColumn<QString>("name");
    for (const char *start : {"", "x"}) {
      for (const char *end : {"", "x"}) {
        QTest::addRow("%s to %s", start, end) << start + QStringLiteral("📦").repeated(100) + end;
      }
    }
  }
  void surrogatePairsAreNotSplit() {
    QFETCH(QString, name);
    const QString safe = attachmentFileName(name);
    QVERIFY(safe.isValidUtf16());
    QVERIFY(safe.toUtf8().size() <= 255);
  }

  void aPlainNameOfSafeAsciiIsUnchanged() {
    QCOMPARE(plainFileName("Vardex_4711 50% <b>.csv"), "Vardex_4711 50% <b>.csv");
  }

  void aPlainNameContainsOnlySafeAscii() {
    QCOMPARE(plainFileName("a \"é\\\r\n.csv"), "a _____.csv");
  }

  void aPlainNameNeverContainsAnEncodedWord() {
    QCOMPARE(plainFileName("a =?UTF-8?B?QUJD?=.csv"), "a =_UTF-8?B?QUJD?=.csv");
  }

  void aLongPlainNameLosesItsMiddle() {
    const QString half = QStringLiteral("x").repeated(20);
    QCOMPARE(plainFileName(half + half), half + half);
    QCOMPARE(plainFileName(half + "-----" + half), half + half);
  }
};

CARTONPICK_TEST(MailFileNameTest);
#include "MailFileName_test.moc"
