#include "scanner/BurstDetector.h"

#include "support/TestClass.h"

#include <QList>
#include <QTest>

namespace {

using Times = QList<quint64>;

/// What the detector makes of `code` typed with these milliseconds before each key, Return being
/// the last; null if a person typed it.
QString verdict(const QString &code, const Times &gaps) {
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
  void aScannersCodeIsToldByItsHaste_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<Times>("gaps");
    QTest::newRow("all in one millisecond") << "5012345678900" << evenly(0, 14);
    QTest::newRow("wired") << "5012345678900" << Times{900, 2, 1, 2, 1, 1, 2, 2, 1, 2, 1, 2, 1, 2};
    QTest::newRow("13 in 20 ms") << "5012345678900"
                                 << Times{0, 1, 2, 1, 2, 1, 2, 1, 2, 1, 2, 1, 2, 2};
    QTest::newRow("a key each 8 ms") << "85123A" << Times{400, 8, 8, 8, 16, 8, 8};
    QTest::newRow("with shift keys between") << "ABC-9" << Times{0, 17, 16, 17, 16, 8};
    QTest::newRow("over radio") << "20138A" << Times{3000, 22, 31, 19, 27, 34, 30};
    QTest::newRow("at the limit") << "20138A" << evenly(BurstDetector::kLongestGap, 7);
    QTest::newRow("the shortest code") << "42" << Times{0, 3, 3};
    QTest::newRow("held up on its way")
        << "5012746100420" << Times{0, 4, 4, 4, 4, 4, 4, 4, 4, 4, 150, 4, 4, 4};
    QTest::newRow("its Return held up") << "20138A" << Times{0, 4, 4, 4, 4, 4, 240};
    QTest::newRow("blanks and signs") << "C 001;%'" << evenly(4, 9);
  }

  void aScannersCodeIsToldByItsHaste() {
    QFETCH(const QString, code);
    QFETCH(const Times, gaps);
    QCOMPARE(verdict(code, gaps), code);
  }

  void aPersonIsNeverTakenForAScanner_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<Times>("gaps");
    QTest::newRow("two fingers looking") << "471" << Times{800, 390, 520, 640};
    QTest::newRow("a fast typist") << "20138A" << Times{0, 92, 71, 118, 84, 66, 131};
    QTest::newRow("keys that roll over each other") << "1234" << Times{0, 24, 88, 19, 93};
    QTest::newRow("rolling, but Return takes its time") << "12" << Times{0, 21, 140};
    QTest::newRow("one key and Return at once") << "7" << Times{0, 12};
    QTest::newRow("the fastest that a thumb drums") << "1111" << evenly(58, 5);
    QTest::newRow("just over the limit") << "20138A" << evenly(BurstDetector::kLongestGap + 1, 7);
    QTest::newRow("a pause after two keys") << "5012345" << Times{0, 2, 90, 80, 70, 120, 90, 60};
    QTest::newRow("a scanner's code, and a Return of one's own")
        << "20138A" << Times{0, 4, 4, 4, 4, 4, 600};
  }

  void aPersonIsNeverTakenForAScanner() {
    QFETCH(const QString, code);
    QFETCH(const Times, gaps);
    QCOMPARE(verdict(code, gaps), QString());
  }

  void aCodeBeginsAfterWhatAPersonTypedBefore() {
    BurstDetector detector;
    detector.type(QStringLiteral("4"), 100);
    QVERIFY(!detector.type(QStringLiteral("8"), 300));
    QVERIFY(detector.type(QStringLiteral("5"), 302));
    QCOMPARE(detector.pressReturn(304)->code, QStringLiteral("85"));
  }

  void aCodeAfterAPauseIsNoContinuation_data() {
    QTest::addColumn<quint64>("gap");
    QTest::addColumn<bool>("isAfterPause");
    QTest::newRow("the rest of a code that was held up") << quint64{300} << false;
    QTest::newRow("just under") << quint64{BurstDetector::kPause - 1} << false;
    QTest::newRow("a code of its own") << quint64{BurstDetector::kPause} << true;
  }

  void aCodeAfterAPauseIsNoContinuation() {
    QFETCH(const quint64, gap);
    QFETCH(const bool, isAfterPause);
    BurstDetector detector;
    detector.type(QStringLiteral("50"), 100);
    detector.type(QStringLiteral("420"), 100 + gap);
    QCOMPARE(detector.pressReturn(101 + gap)->isAfterPause, isAfterPause);
  }

  void aCodeAfterAReturnIsNoContinuation() {
    BurstDetector detector;
    detector.type(QStringLiteral("C001"), 100);
    QVERIFY(detector.pressReturn(101)->isAfterPause);
    detector.type(QStringLiteral("C002"), 102);
    QVERIFY(detector.pressReturn(103)->isAfterPause);
  }

  void aFewKeysInARowAreAScannersForCertain() {
    BurstDetector detector;
    for (int key = 0; key < BurstDetector::kCertainLength; ++key) {
      QVERIFY(!detector.isCertain());
      QCOMPARE(detector.longestGap(), BurstDetector::kLongestGap);
      detector.type(QStringLiteral("1"), 100 + 5 * static_cast<quint64>(key));
    }
    QVERIFY(detector.isCertain());
    QCOMPARE(detector.longestGap(), BurstDetector::kLongestStop);
  }

  void aCodeWithoutReturnIsNone() {
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

  void aClockThatRunsBackBeginsAnew() {
    BurstDetector detector;
    detector.type(QStringLiteral("4711"), 100);
    QVERIFY(!detector.type(QStringLiteral("85"), 50));
    QCOMPARE(detector.pressReturn(51)->code, QStringLiteral("85"));
  }
};

CARTONPICK_TEST(BurstDetectorTest);
#include "BurstDetector_test.moc"
