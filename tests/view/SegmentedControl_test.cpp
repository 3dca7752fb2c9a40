#include "view/outlets/SegmentedControl.h"

#include "support/TestClass.h"

#include <QSignalSpy>
#include <QTest>

class SegmentedControlTest : public QObject {
  Q_OBJECT

 private slots:
  void aTouchSelectsASegmentAndSignalsIt() {
    SegmentedControl control("segmentedControl", nullptr);
    const QSignalSpy valueChanged(&control, &SegmentedControl::valueChanged);
    control.touchSegment(2);
    QCOMPARE(control.selectedSegmentIndex(), 2);
    QCOMPARE(valueChanged.size(), 1);
  }

  void touchingTheSelectedSegmentChangesNothing() {
    SegmentedControl control("segmentedControl", nullptr);
    const QSignalSpy valueChanged(&control, &SegmentedControl::valueChanged);
    control.touchSegment(0);
    QCOMPARE(valueChanged.size(), 0);
  }

  void aProgrammaticSelectionIsNotSignalledAsATouch() {
    SegmentedControl control("segmentedControl", nullptr);
    const QSignalSpy changed(&control, &SegmentedControl::changed);
    const QSignalSpy valueChanged(&control, &SegmentedControl::valueChanged);
    control.setSelectedSegmentIndex(1);
    QCOMPARE(control.selectedSegmentIndex(), 1);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(valueChanged.size(), 0);
  }

  void settingTheTitlesIsSignalled() {
    SegmentedControl control("segmentedControl", nullptr);
    const QSignalSpy changed(&control, &SegmentedControl::changed);
    const QStringList titles{QStringLiteral("All"), QStringLiteral("Not picked")};
    control.setTitles(titles);
    QCOMPARE(control.titles(), titles);
    QCOMPARE(changed.size(), 1);
  }
};

CARTONPICK_TEST(SegmentedControlTest);
#include "SegmentedControl_test.moc"
