#include "device/MailHeader.h"

#include "support/TestClass.h"

#include <QTest>

class MailHeaderTest : public QObject {
  Q_OBJECT

 private slots:
  void plainTextIsUnchanged() {
    QCOMPARE(encodedHeaderText("Vardex File 4711"), "Vardex File 4711");
    QCOMPARE(encodedHeaderText("\"50%\" <4711>"), "\"50%\" <4711>");
    QCOMPARE(encodedHeaderText(""), "");
  }

  void nonAsciiTextIsAnEncodedWord() { QCOMPARE(encodedHeaderText("é"), "=?UTF-8?B?w6k=?="); }

  void textThatLooksLikeAnEncodedWordIsEncoded() {
    QCOMPARE(encodedHeaderText("=?x"), "=?UTF-8?B?PT94?=");
  }

  void spacesThatAMailReaderWouldDropAreEncoded() {
    QCOMPARE(encodedHeaderText("a "), "=?UTF-8?B?YSA=?=");
    QCOMPARE(encodedHeaderText("a  b"), "=?UTF-8?B?YSAgYg==?=");
  }

  void lineBreaksBecomeSpaces() {
    QCOMPARE(encodedHeaderText("a\nb"), "a b");
    QCOMPARE(encodedHeaderText("a\r\nb"), encodedHeaderText("a  b"));
    QCOMPARE(encodedHeaderText("a\u2028b"), "a b");
    QCOMPARE(encodedHeaderText(QString(QChar(0x85))), encodedHeaderText(" "));
  }

  void aLongTextIsFoldedBetweenCharacters() {
    // An encoded word holds 39 bytes, which is nine characters of four bytes.
    QCOMPARE(encodedHeaderText(QStringLiteral("📦").repeated(10)),
             "=?UTF-8?B?" + QStringLiteral("📦").repeated(9).toUtf8().toBase64() +
                 "?=\r\n =?UTF-8?B?" + QByteArray("📦").toBase64() + "?=");
  }

  void aParameterIsPercentEncoded() {
    QCOMPARE(encodedHeaderParameter("filename", "a \"é\".csv"),
             ";\r\n filename*0*=UTF-8''a%20%22%C3%A9%22.csv");
  }

  void aLongParameterIsSplitIntoNumberedPieces() {
    QCOMPARE(encodedHeaderParameter("filename", QStringLiteral("x").repeated(17) + "éy"),
             ";\r\n filename*0*=UTF-8''xxxxxxxxxxxxxxxxx;\r\n filename*1*=%C3%A9y");
  }

  void aPlainParameterContainsOnlySafeAscii() {
    QCOMPARE(plainHeaderParameter("name", "a \"é\\\r\n.csv"), ";\r\n name=\"a _____.csv\"");
  }

  void aLongPlainParameterKeepsItsStartAndEnd() {
    const QString half = QStringLiteral("x").repeated(30);
    QCOMPARE(plainHeaderParameter("name", half + "-----" + half),
             ";\r\n name=\"" + half.toLatin1() + half.toLatin1() + '"');
  }
};

CARTONPICK_TEST(MailHeaderTest);
#include "MailHeader_test.moc"
