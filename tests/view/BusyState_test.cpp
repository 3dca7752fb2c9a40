#include "view/BusyState.h"

#include "support/TestClass.h"

#include <QSignalSpy>
#include <QTest>

class BusyStateTest : public QObject {
  Q_OBJECT

 private slots:
  void isInactiveAtFirst() {
    const BusyState busy;
    QVERIFY(!busy.isActive());
    QVERIFY(busy.progress() < 0);
  }

  void workBeginsAdvancesAndEnds() {
    BusyState busy;
    const QSignalSpy changed(&busy, &BusyState::changed);
    busy.begin(QStringLiteral("Loading the articles"));
    QVERIFY(busy.isActive());
    QCOMPARE(busy.title(), "Loading the articles");
    QVERIFY(busy.progress() < 0);
    QCOMPARE(changed.size(), 1);
    busy.setProgress(QStringLiteral("1 of 2"), 0.5);
    QCOMPARE(busy.progressText(), "1 of 2");
    QCOMPARE(busy.progress(), 0.5);
    QCOMPARE(changed.size(), 2);
    busy.end();
    QVERIFY(!busy.isActive());
    QCOMPARE(changed.size(), 3);
  }

  void newWorkStartsWithoutEarlierProgress() {
    BusyState busy;
    busy.begin(QStringLiteral("first"));
    busy.setProgress(QStringLiteral("half"), 0.5);
    busy.end();
    busy.begin(QStringLiteral("second"));
    QCOMPARE(busy.title(), "second");
    QCOMPARE(busy.progressText(), QString());
    QVERIFY(busy.progress() < 0);
  }
};

CARTONPICK_TEST(BusyStateTest);
#include "BusyState_test.moc"
