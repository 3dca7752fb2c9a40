#include "base/Clock.h"

#include "support/TestClass.h"

#include <QTest>

class ClockTest : public QObject {
  Q_OBJECT

 private slots:
  void theTimeIsTheSystemTimeInUtc() {
    const QDateTime before = QDateTime::currentDateTimeUtc();
    const QDateTime now = SystemClock().now();
    const QDateTime after = QDateTime::currentDateTimeUtc();
    QCOMPARE(now.timeSpec(), Qt::UTC);
    QVERIFY(before <= now);
    QVERIFY(now <= after);
  }

  void theTimeZoneIsReadOnEveryCall() {
    const QByteArray zone = qgetenv("TZ");
    const SystemClock clock;
    qputenv("TZ", "Asia/Tokyo");
    QCOMPARE(clock.localZone().id(), "Asia/Tokyo");
    qputenv("TZ", "America/New_York");
    QCOMPARE(clock.localZone().id(), "America/New_York");
    qputenv("TZ", zone);
  }
};

CARTONPICK_TEST(ClockTest);
#include "Clock_test.moc"
