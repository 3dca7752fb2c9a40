#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>

namespace {

const QString kClosePicking =
    QStringLiteral("Close Picking|Are you sure you want to leave picking?|OK|Cancel");

bool showsNoText(const TestWindow &ui) {
  const QList<QQuickItem *> items = ui.visibleItems();
  return std::none_of(items.begin(), items.end(), [](const QQuickItem *item) {
    return !item->property("text").toString().isEmpty();
  });
}

}  // namespace

/// The start screen, and navigation to and from it.
class StartScreenUiTest : public QObject {
  Q_OBJECT

 private slots:
  void theProgramOpensOnTheStartScreen() {
    const TestWindow ui;
    QCOMPARE(ui.text("btnSegueToSplitView"), "Picking");
    QCOMPARE(ui.text("btnSegueHistory"), "History");
    QTRY_COMPARE(ui.keyboard(), "btnSegueToSplitView");
  }

  void showsWhichOrderServiceIsUsed() {
    const TestWindow ui;
    QCOMPARE(ui.text("lblServiceHost"), "Order service: " + ui.service.host());
    QVERIFY(!ui.shows("btnDemo"));
  }

  void showsThatTheCarefulRulesAreInUse() {
    QVERIFY(!TestWindow().shows("lblRules"));
    const TestWindow ui({1280, 800}, false, PickingRules::careful());
    QCOMPARE(ui.text("lblRules"), "The careful rules are in use.");
  }

  void withoutAnOrderServiceItOffersTheDemo() {
    TestWindow ui;
    ui.environment.serviceHost.clear();
    ui.restart();
    QCOMPARE(ui.text("btnDemo"), "Try the demo");
    QVERIFY(ui.isEnabled("btnDemo"));
    QVERIFY(ui.text("lblServiceHost").contains("--service-host"));
  }

  void touchingPickingOpensAnEmptyPickingScreen() {
    TestWindow ui;
    ui.touch("btnSegueToSplitView");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtDeliveryNo"));
    QVERIFY(!ui.shows("startViewController"));
    QCOMPARE(ui.text("txtDeliveryNo"), "");
    QVERIFY(!ui.shows("tblBoxesRow0"));
    QVERIFY(!ui.shows("tblItemsRow0"));
  }

  void spaceOnPickingOpensThePickingScreen() {
    TestWindow ui;
    ui.press(Qt::Key_Space);
    QTRY_VERIFY(ui.shows("masterViewController"));
  }

  void returnOnPickingDoesNothing() {
    TestWindow ui;
    ui.press(Qt::Key_Return);
    ui.press(Qt::Key_Enter);
    QVERIFY(ui.shows("startViewController"));
    QVERIFY(!ui.shows("splitViewController"));
  }

  void historyOpensTheHistoryAndBackReturnsToTheStartScreen() {
    TestWindow ui;
    ui.touch("btnSegueHistory");
    QTRY_VERIFY(ui.shows("HistoryViewController"));
    QVERIFY(!ui.shows("startViewController"));
    ui.touch("btnBack");
    QTRY_VERIFY(ui.shows("startViewController"));
    QVERIFY(!ui.shows("HistoryViewController"));
    QTRY_COMPARE(ui.keyboard(), "btnSegueToSplitView");
  }

  void leavingThePickingScreenAsksForConfirmation() {
    TestWindow ui;
    ui.enterPicking();
    ui.touch("btnClose");
    QTRY_COMPARE(ui.alerts(), QStringList(kClosePicking));
    QVERIFY(ui.shows("masterViewController"));
  }

  void cancelStaysOnTheUnchangedPickingScreen() {
    TestWindow ui;
    ui.enterPicking();
    ui.lookUp({{"C1", "A", 5}});
    ui.touch("btnClose");
    ui.touch("alertButton1");
    QTRY_COMPARE(ui.alerts(), QStringList());
    QVERIFY(ui.shows("masterViewController"));
    QCOMPARE(ui.text("txtDeliveryNo"), "4711");
    QCOMPARE(ui.text("lblCustomerName"), "Customer: Corner Shop");
    QVERIFY(ui.isEnabled("btnPicking"));
  }

  void escapeStaysOnThePickingScreen() {
    TestWindow ui;
    ui.enterPicking();
    ui.touch("btnClose");
    QTRY_COMPARE(ui.alerts().size(), 1);
    ui.press(Qt::Key_Escape);
    QTRY_COMPARE(ui.alerts(), QStringList());
    QVERIFY(ui.shows("masterViewController"));
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtDeliveryNo"));
  }

  void returnDoesNotAnswerAnAlert() {
    TestWindow ui;
    ui.enterPicking();
    ui.touch("btnClose");
    QTRY_COMPARE(ui.alerts().size(), 1);
    ui.press(Qt::Key_Return);
    ui.press(Qt::Key_Enter);
    QCOMPARE(ui.alerts(), QStringList(kClosePicking));
  }

  void okReturnsToTheStartScreenAndTheNextPickingIsEmpty() {
    TestWindow ui;
    ui.enterPicking();
    ui.lookUp({{"C1", "A", 5}});
    ui.touch("btnClose");
    ui.touch("alertButton0");
    QTRY_VERIFY(ui.shows("startViewController"));
    QVERIFY(!ui.shows("splitViewController"));
    QCOMPARE(ui.alerts(), QStringList());
    QTRY_COMPARE(ui.keyboard(), "btnSegueToSplitView");
    ui.enterPicking();
    QCOMPARE(ui.text("txtDeliveryNo"), "");
    QVERIFY(!ui.shows("lblCustomerName"));
    QVERIFY(!ui.isEnabled("btnPicking"));
  }

  void theWindowIsNeverEmptyDuringNavigation() {
    TestWindow ui;
    int frames = 0;
    int emptyFrames = 0;
    connect(&ui.window(), &QQuickWindow::frameSwapped, this,
            [&] { (showsNoText(ui) ? emptyFrames : frames) += 1; });
    ui.enterPicking();
    ui.touch("btnClose");
    ui.touch("alertButton1");
    ui.touch("btnClose");
    ui.touch("alertButton0");
    ui.touch("btnSegueHistory");
    ui.touch("btnBack");
    QTRY_COMPARE(ui.keyboard(), "btnSegueToSplitView");
    QTRY_VERIFY(frames > 0);
    QCOMPARE(emptyFrames, 0);
  }
};

CARTONPICK_WINDOW_TEST(StartScreenUiTest);
#include "StartScreenUi_test.moc"
