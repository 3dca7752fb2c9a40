#include "app/DisplayViewController.h"

#include "support/TestClass.h"
#include "support/TestEnvironment.h"

#include <QTest>

class DisplayViewControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void showsTheCurrentSettings() {
    TestEnvironment test;
    test.environment.display->setTheme(DisplaySettings::Theme::Dark);
    test.environment.display->setTextSize(150);
    DisplayViewController display(test.environment);
    display.loadViewIfNeeded();
    QCOMPARE(display.segmTheme->titles(), QStringList({"System", "Light", "Dark"}));
    QCOMPARE(display.segmTheme->selectedSegmentIndex(), 2);
    QCOMPARE(display.segmTextSize->titles(), QStringList({"100 %", "125 %", "150 %", "200 %"}));
    QCOMPARE(display.segmTextSize->selectedSegmentIndex(), 2);
  }

  void touchingASegmentChangesTheSetting() {
    TestEnvironment test;
    DisplayViewController display(test.environment);
    display.loadViewIfNeeded();
    display.segmTheme->touchSegment(1);
    QCOMPARE(test.environment.display->theme(), DisplaySettings::Theme::Light);
    display.segmTheme->touchSegment(0);
    QCOMPARE(test.environment.display->theme(), DisplaySettings::Theme::System);
    display.segmTextSize->touchSegment(3);
    QCOMPARE(test.environment.display->textScale(), 2.0);
  }
};

CARTONPICK_TEST(DisplayViewControllerTest);
#include "DisplayViewController_test.moc"
