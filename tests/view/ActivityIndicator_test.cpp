#include "view/outlets/ActivityIndicator.h"

#include "support/TestClass.h"

#include <QSignalSpy>
#include <QTest>

class ActivityIndicatorTest : public QObject {
  Q_OBJECT

 private slots:
  void spinsFromStartToStop() {
    ActivityIndicator indicator("activityIndicator", nullptr);
    QVERIFY(!indicator.isAnimating());
    indicator.startAnimating();
    QVERIFY(indicator.isAnimating());
    indicator.stopAnimating();
    QVERIFY(!indicator.isAnimating());
  }

  void oneStopEndsTwoStarts() {
    ActivityIndicator indicator("activityIndicator", nullptr);
    const QSignalSpy changed(&indicator, &ActivityIndicator::changed);
    indicator.startAnimating();
    indicator.startAnimating();
    QCOMPARE(changed.size(), 1);
    indicator.stopAnimating();
    QVERIFY(!indicator.isAnimating());
    QCOMPARE(changed.size(), 2);
  }
};

CARTONPICK_TEST(ActivityIndicatorTest);
#include "ActivityIndicator_test.moc"
