#include "picking/ScanTrail.h"

#include "support/TestClass.h"

#include <QSignalSpy>
#include <QTest>

class ScanTrailTest : public QObject {
  Q_OBJECT

 private slots:
  void theLatestScanComesFirst() {
    ScanTrail trail;
    const QSignalSpy changed(&trail, &ScanTrail::changed);
    trail.add({.code = QStringLiteral("A"), .outcome = ScanOutcome::Unknown});
    trail.add({.code = QStringLiteral("B"), .outcome = ScanOutcome::Loose});
    QCOMPARE(trail.scans().size(), std::size_t{2});
    QCOMPARE(trail.scans().at(0).code, QStringLiteral("B"));
    QCOMPARE(trail.scans().at(1).code, QStringLiteral("A"));
    QCOMPARE(changed.size(), 2);
  }

  void theLatestFoundScanIsBookedDespiteLaterScans() {
    ScanTrail trail;
    trail.add({.code = QStringLiteral("A"), .outcome = ScanOutcome::Found, .line = 1});
    trail.add({.code = QStringLiteral("B"), .outcome = ScanOutcome::Found, .line = 2});
    trail.add({.code = QStringLiteral("C"), .outcome = ScanOutcome::Refused});
    trail.bookLatestFound();
    QCOMPARE(trail.scans().at(0).outcome, ScanOutcome::Refused);
    QCOMPARE(trail.scans().at(1).outcome, ScanOutcome::Booked);
    QCOMPARE(trail.scans().at(2).outcome, ScanOutcome::Found);
  }

  void withoutAFoundScanNothingIsBooked() {
    ScanTrail trail;
    trail.add({.code = QStringLiteral("A"), .outcome = ScanOutcome::Unknown});
    trail.bookLatestFound();
    QCOMPARE(trail.scans().at(0).outcome, ScanOutcome::Unknown);
  }

  void theOldestScansAreDropped() {
    ScanTrail trail;
    for (std::size_t i = 0; i <= ScanTrail::kCapacity; ++i) {
      trail.add({.code = QString::number(i)});
    }
    QCOMPARE(trail.scans().size(), ScanTrail::kCapacity);
    QCOMPARE(trail.scans().back().code, QStringLiteral("1"));
  }

  void clearingRemovesAllScans() {
    ScanTrail trail;
    trail.add({.code = QStringLiteral("A")});
    trail.clear();
    QVERIFY(trail.scans().empty());
  }
};

CARTONPICK_TEST(ScanTrailTest);
#include "ScanTrail_test.moc"
