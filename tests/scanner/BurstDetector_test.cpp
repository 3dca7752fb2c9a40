#include "scanner/BurstDetector.h"

#include "support/TestClass.h"

#include <QList>
#include <QTest>

namespace {

using Times = QList<quint64>;

/// Types `code` and Return with `gaps`, the milliseconds before each key. Returns the code if the
/// detector recognises it as a scan, or a null string if it takes the keys for typing.
QString detectedCode(const QString &code, const Times &gaps) {
  BurstDetector detector;
  quint64 time = 5000;
  for (qsizetype i = 0; i < code.size(); ++i) {
    time += gaps.at(i);
    detector.type(code.mid(i, 1), time);
  }
  return detector.pressReturn(time + gaps.at(code.size())).value_or(Burst()).code;
}

Times evenly(quint64 gap, qsizetype keys) {
  return Times(keys, gap);
}

}  // namespace

class BurstDetectorTest : public QObject {
  Q_OBJECT

 private slots:
  void aScanIsRecognisedByItsSpeed_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<Times>("gaps");
    QTest::newRow("all in one millisecond") << "5012345678900" << evenly(0, 14);
    QTest::newRow("wired") << "5012345678900" << Times{900, 2, 1, 2, 1, 1, 2, 2, 1, 2, 1, 2, 1, 2};
    QTest::newRow("13 in 20 ms") << "5012345678900"
                                 << Times{0, 1, 2, 1, 2, 1, 2, 1, 2, 1, 2, 1, 2, 2};
    QTest::newRow("one key every 8 ms") << "85123A" << Times{400, 8, 8, 8, 16, 8, 8};
    QTest::newRow("with Shift keys between") << "ABC-9" << Times{0, 17, 16, 17, 16, 8};
    QTest::newRow("wireless") << "20138A" << Times{3000, 22, 31, 19, 27, 34, 30};
    QTest::newRow("at the limit") << "20138A" << evenly(BurstDetector::kLongestGap, 7);
    QTest::newRow("the shortest code") << "42" << Times{0, 3, 3};
    QTest::newRow("one key delayed")
        << "5012746100420" << Times{0, 4, 4, 4, 4, 4, 4, 4, 4, 4, 150, 4, 4, 4};
    QTest::newRow("Return delayed") << "20138A" << Times{0, 4, 4, 4, 4, 4, 240};
    QTest::newRow("spaces and punctuation") << "C 001;%'" << evenly(4, 9);
  }

  void aScanIsRecognisedByItsSpeed() {
    QFETCH(const QString, code);
    QFETCH(const Times, gaps);
    QCOMPARE(detectedCode(code, gaps), code);
  }

  void typingIsNotMistakenForAScan_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<Times>("gaps");
    QTest::newRow("hunt and peck") << "471" << Times{800, 390, 520, 640};
    QTest::newRow("a fast typist") << "20138A" << Times{0, 92, 71, 118, 84, 66, 131};
    QTest::newRow("overlapping keys") << "1234" << Times{0, 24, 88, 19, 93};
    QTest::newRow("overlapping keys, late Return") << "12" << Times{0, 21, 140};
    QTest::newRow("one key and Return at once") << "7" << Times{0, 12};
    QTest::newRow("one key pressed as fast as possible") << "1111" << evenly(58, 5);
    QTest::newRow("just over the limit") << "20138A" << evenly(BurstDetector::kLongestGap + 1, 7);
    QTest::newRow("a pause after two keys") << "5012345" << Times{0, 2, 90, 80, 70, 120, 90, 60};
    QTest::newRow("a scanned code, but Return by a person")
        << "20138A" << Times{0, 4, 4, 4, 4, 4, 600};
  }

  void typingIsNotMistakenForAScan() {
    QFETCH(const QString, code);
    QFETCH(const Times, gaps);
    QCOMPARE(detectedCode(code, gaps), QString());
  }

  void aCodeCanFollowKeysTypedByAPerson() {
    BurstDetector detector;
    detector.type(QStringLiteral("4"), 100);
    QVERIFY(!detector.type(QStringLiteral("8"), 300));
    QVERIFY(detector.type(QStringLiteral("5"), 302));
    QCOMPARE(detector.pressReturn(304)->code, QStringLiteral("85"));
  }

  void aPauseSeparatesTwoCodes_data() {
    QTest::addColumn<quint64>("gap");
    QTest::addColumn<bool>("isAfterPause");
    QTest::newRow("the rest of a delayed code") << quint64{300} << false;
    QTest::newRow("just under the pause") << quint64{BurstDetector::kPause - 1} << false;
    QTest::newRow("a new code") << quint64{BurstDetector::kPause} << true;
  }

  void aPauseSeparatesTwoCodes() {
    QFETCH(const quint64, gap);
    QFETCH(const bool, isAfterPause);
    BurstDetector detector;
    detector.type(QStringLiteral("50"), 100);
    detector.type(QStringLiteral("420"), 100 + gap);
    QCOMPARE(detector.pressReturn(101 + gap)->isAfterPause, isAfterPause);
  }

  void aCodeAfterAReturnIsANewCode() {
    BurstDetector detector;
    detector.type(QStringLiteral("C001"), 100);
    QVERIFY(detector.pressReturn(101)->isAfterPause);
    detector.type(QStringLiteral("C002"), 102);
    QVERIFY(detector.pressReturn(103)->isAfterPause);
  }

  void enoughFastKeysAreCertainlyAScan() {
    BurstDetector detector;
    for (int key = 0; key < BurstDetector::kCertainLength; ++key) {
      QVERIFY(!detector.isCertain());
      QCOMPARE(detector.longestGap(), BurstDetector::kLongestGap);
      detector.type(QStringLiteral("1"), 100 + 5 * static_cast<quint64>(key));
    }
    QVERIFY(detector.isCertain());
    QCOMPARE(detector.longestGap(), BurstDetector::kLongestStop);
  }

  void anInterruptedCodeIsDiscarded() {
    BurstDetector detector;
    detector.type(QStringLiteral("85"), 100);
    detector.interrupt();
    QVERIFY(!detector.pressReturn(101));
  }

  void returnEndsACode() {
    BurstDetector detector;
    detector.type(QStringLiteral("85123A"), 100);
    QCOMPARE(detector.pressReturn(101)->code, QStringLiteral("85123A"));
    QVERIFY(!detector.pressReturn(102));
  }

  void aTimestampThatGoesBackwardsStartsANewCode() {
    BurstDetector detector;
    detector.type(QStringLiteral("4711"), 100);
    QVERIFY(!detector.type(QStringLiteral("85"), 50));
    QCOMPARE(detector.pressReturn(51)->code, QStringLiteral("85"));
  }
};

CARTONPICK_TEST(BurstDetectorTest);
#include "BurstDetector_test.moc"
