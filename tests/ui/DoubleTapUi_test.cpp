#include "app/TouchGuard.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QAccessible>
#include <QPointingDevice>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <functional>

using namespace std::chrono_literals;

namespace {

/// The first box has a line under each button of the keypad.
const QList<TestLine> kLines{{"C1", "A", 5}, {"C1", "B", 2}, {"C1", "C", 4}, {"C1", "D", 1},
                             {"C1", "E", 2}, {"C1", "F", 3}, {"C1", "G", 6}, {"C1", "H", 1},
                             {"C2", "I", 1}, {"C3", "J", 1}};
const QString kSummary = QStringLiteral("deliveryDetailsViewController");

QString text(const QQuickItem *item, const char *property) {
  return item->property(property).toString();
}

/// Everything in the window that a touch could change, and what the program did outside of it.
QStringList stateOf(const TestWindow &ui) {
  ui.settle();
  QStringList state{ui.keyboard(), QString::number(ui.service.requests().size()),
                    QString::number(ui.mail->drafts().size())};
  for (const QQuickItem *item : ui.visibleItems()) {
    if (!item->objectName().isEmpty()) {
      state.append(QStringList{item->objectName(), text(item, "text"), text(item, "isMarked"),
                               text(item, "isSelected"), text(item, "enabled")}
                       .join(u'|'));
    }
  }
  return state;
}

void openKeypad(TestWindow &ui) {
  ui.openBox(kLines);
  ui.openKeypad(2);
}

void openOptions(TestWindow &ui) {
  ui.openBox(kLines);
  ui.openKeypad();
  ui.confirm(QStringLiteral("5"));
  ui.touch(QStringLiteral("btnOptions"));
  QTRY_VERIFY(ui.shows(QStringLiteral("tableViewRow2")));
}

void askWhetherCompleted(TestWindow &ui) {
  openOptions(ui);
  ui.service.answerWith("\"0\"");
  ui.touch(QStringLiteral("tableViewRow2"));
  QTRY_COMPARE(ui.text(QStringLiteral("alertTitle")), QStringLiteral("Picking Completed?"));
}

void openHistory(TestWindow &ui) {
  ui.openBox(kLines);
  ui.openKeypad();
  ui.confirm(QStringLiteral("5"));
  ui.touch(QStringLiteral("btnPicking"));
  ui.touch(QStringLiteral("btnClose"));
  ui.touch(QStringLiteral("alertButton0"));
  ui.touch(QStringLiteral("btnSegueHistory"));
  QTRY_VERIFY(ui.shows(QStringLiteral("tblHistoryOverviewRow0")));
}

/// A control, the way to it, and what is on the screen after a touch of it.
struct Control {
  const char *name;
  std::function<void(TestWindow &)> open;
  QString item;
  std::function<bool(const TestWindow &)> isDone;
};

std::function<bool(const TestWindow &)> shows(const QString &name) {
  return [name](const TestWindow &ui) { return ui.shows(name); };
}

std::function<bool(const TestWindow &)> hides(const QString &name) {
  return [name](const TestWindow &ui) { return !ui.shows(name); };
}

std::function<bool(const TestWindow &)> reads(const QString &name, const QString &shown) {
  return [=](const TestWindow &ui) { return ui.text(name) == shown; };
}

std::function<bool(const TestWindow &)> hasFocus(const QString &name) {
  return [name](const TestWindow &ui) { return ui.keyboard() == name; };
}

void stay(TestWindow & /*ui*/) {}

const QList<Control> &controls() {
  static const QList<Control> all{
      {"Picking", stay, "btnSegueToSplitView", shows("txtDeliveryNo")},
      {"History", stay, "btnSegueHistory", shows("btnBack")},
      {"Display", stay, "btnDisplay", shows("btnDone")},
      {"Done", [](TestWindow &ui) { ui.touch("btnDisplay"); }, "btnDone", hides("btnDone")},
      {"a text size", [](TestWindow &ui) { ui.touch("btnDisplay"); }, "segmTextSize3",
       [](const TestWindow &ui) { return ui.environment.display->textScale() > 1; }},
      {"Close", [](TestWindow &ui) { ui.enterPicking(); }, "btnClose", shows("alertButton0")},
      {"a confirmation",
       [](TestWindow &ui) {
         ui.enterPicking();
         ui.touch("btnClose");
       },
       "alertButton0", shows("btnSegueToSplitView")},
      {"a cancellation",
       [](TestWindow &ui) {
         ui.enterPicking();
         ui.touch("btnClose");
       },
       "alertButton1", hides("alertButton1")},
      {"Search",
       [](TestWindow &ui) {
         ui.enterPicking();
         ui.service.answerWith(deliveryJson(kLines));
         ui.type("4711");
       },
       "btnSearch",
       [](const TestWindow &ui) { return ui.isEnabled("btnPicking") && !ui.shows("busy"); }},
      {"Reload Items",
       [](TestWindow &ui) {
         ui.enterPicking();
         ui.service.answerWith("[]");
       },
       "btnReloadItems", shows("alertButton0")},
      {"Start Picking",
       [](TestWindow &ui) {
         ui.enterPicking();
         ui.lookUp(kLines);
       },
       "btnPicking", reads("btnPicking", "Stop Picking")},
      {"Stop Picking", [](TestWindow &ui) { ui.openBox(kLines); }, "btnPicking",
       reads("btnPicking", "Start Picking")},
      {"a box", [](TestWindow &ui) { ui.startPicking(kLines); }, "tblBoxesRow1",
       reads("lblOpenBox", "C2")},
      {"a line", [](TestWindow &ui) { ui.openBox(kLines); }, "tblItemsRow2", shows("txtNewQty")},
      {"OK",
       [](TestWindow &ui) {
         openKeypad(ui);
         ui.touch("btn1");
       },
       "btnOK", hides("txtNewQty")},
      {"Cancel", openKeypad, "btnCancel", hides("txtNewQty")},
      {"the sign", [](TestWindow &ui) { ui.openBox(kLines); }, "pill",
       shows("ScanTrailViewController")},
      {"Options", [](TestWindow &ui) { ui.openBox(kLines); }, "btnOptions", shows("tableViewRow2")},
      {"a point beside the options", openOptions, "tblItemsRow3", hides("tableViewRow2")},
      {"View Summary", openOptions, "tableViewRow0", hasFocus("btnClose")},
      {"Send Email", openOptions, "tableViewRow1",
       [](const TestWindow &ui) { return ui.mail->drafts().size() == 1; }},
      {"Complete and Send", openOptions, "tableViewRow2", shows("alertButton1")},
      {"NO", askWhetherCompleted, "alertButton0", hides("alertButton0")},
      {"YES", askWhetherCompleted, "alertButton1", reads("alertTitle", "Picking was sent")},
      {"the OK of a message",
       [](TestWindow &ui) {
         ui.openBox(kLines);
         ui.scan("unknown");
       },
       "alertButton0", hides("alertButton0")},
      {"the Close of the summary",
       [](TestWindow &ui) {
         openOptions(ui);
         ui.touch("tableViewRow0");
       },
       kSummary + "/btnClose", hasFocus("txtBarcode")},
      {"a delivery of the history", openHistory, "tblHistoryOverviewRow0", hasFocus("btnClose")},
      {"Back", openHistory, "btnBack", shows("btnSegueToSplitView")}};
  return all;
}

QPointingDevice *finger() {
  static QPointingDevice *device = QTest::createTouchDevice();
  return device;
}

}  // namespace

/// Touches on what has just appeared or changed, as a clumsy finger makes them.
class DoubleTapUiTest : public QObject {
  Q_OBJECT

 private slots:
  void aSecondTapDoesNothing_data() {
    QTest::addColumn<int>("index");
    for (int i = 0; i < controls().size(); ++i) {
      QTest::newRow(controls()[i].name) << i;
    }
  }

  void aSecondTapDoesNothing() {
    QFETCH(const int, index);
    const Control &control = controls()[index];
    TestWindow ui;
    control.open(ui);
    const QPoint place = ui.reach(control.item);
    QVERIFY(!control.isDone(ui));
    ui.tapAt(place);
    ui.tapAt(place);
    QTRY_VERIFY(control.isDone(ui));
    const QStringList expected = stateOf(ui);
    std::chrono::milliseconds time = 0ms;
    for (const auto apart : {60ms, 150ms, 300ms}) {
      ui.clock->advance(apart - std::exchange(time, apart));
      ui.tapAt(place);
      QCOMPARE(stateOf(ui), expected);
    }
  }

  void aSecondClickDoesNothing() {
    TestWindow ui;
    ui.openBox(kLines);
    const QPoint place = ui.reach("tblItemsRow2");
    QTest::mouseClick(&ui.window(), Qt::LeftButton, {}, place);
    QTRY_VERIFY(ui.shows("txtNewQty"));
    const QStringList expected = stateOf(ui);
    ui.clock->advance(150ms);
    QTest::mouseClick(&ui.window(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(&ui.window(), Qt::LeftButton, {}, place);
    QCOMPARE(stateOf(ui), expected);
  }

  void aKeyOfTheKeypadTakesTouches400MillisecondsAfterItAppeared() {
    TestWindow ui;
    ui.openBox(kLines);
    ui.touch("tblItemsRow0");
    QTRY_VERIFY(ui.shows("btn5"));
    ui.settle();
    ui.drawChanges();
    const QPoint key = TestWindow::visiblePart(ui.item("btn5")).center().toPoint();
    ui.clock->advance(399ms);
    ui.tapAt(key);
    QCOMPARE(ui.text("txtNewQty"), "");
    ui.clock->advance(1ms);
    ui.tapAt(key);
    QCOMPARE(ui.text("txtNewQty"), "5");
  }

  void aRowTakesNoTouchJustAfterTheFilterChanged() {
    TestWindow ui;
    ui.openBox(kLines);
    const QPoint row = ui.reach("tblItemsRow0");
    ui.touch("segmentedControl1");
    ui.drawChanges();
    ui.clock->advance(300ms);
    ui.tapAt(row);
    QCOMPARE(ui.keyboard(), "txtBarcode");
    ui.touch("tblItemsRow0");
    QTRY_VERIFY(ui.shows("txtNewQty"));
  }

  void aRowTakesNoTouchJustAfterAnotherBoxWasOpened() {
    TestWindow ui;
    ui.openBox(kLines);
    const QPoint row = ui.reach("tblItemsRow0");
    ui.touch("tblBoxesRow1");
    QTRY_COMPARE(ui.text("lblOpenBox"), "C2");
    ui.drawChanges();
    ui.clock->advance(300ms);
    ui.tapAt(row);
    QVERIFY(!ui.shows("txtNewQty"));
  }

  void whatHasNotChangedTakesTouchesAtOnce() {
    TestWindow ui;
    ui.openBox(kLines);
    const QPoint box = ui.reach("tblBoxesRow2");
    ui.touch("tblBoxesRow1");
    QTRY_COMPARE(ui.text("lblOpenBox"), "C2");
    ui.tapAt(box);
    QTRY_COMPARE(ui.text("lblOpenBox"), "C3");
  }

  void theKeypadTakesFastDigits() {
    TestWindow ui;
    openKeypad(ui);
    const QPoint key = ui.reach("btn1");
    for (int digit = 0; digit < 3; ++digit) {
      ui.tapAt(key);
      ui.clock->advance(60ms);
    }
    QCOMPARE(ui.text("txtNewQty"), "111");
  }

  void aTouchThatBeganBeforeASheetOpenedDoesNothing_data() {
    QTest::addColumn<bool>("isMouse");
    QTest::newRow("finger") << false;
    QTest::newRow("mouse") << true;
  }

  void aTouchThatBeganBeforeASheetOpenedDoesNothing() {
    QFETCH(const bool, isMouse);
    TestWindow ui;
    ui.openBox(kLines);
    const QPoint place = ui.reach("btnPicking");
    if (isMouse) {
      QTest::mousePress(&ui.window(), Qt::LeftButton, {}, place);
    } else {
      QTest::touchEvent(&ui.window(), finger()).press(0, place);
    }
    ui.scan("A");
    QTRY_VERIFY(ui.shows("txtNewQty"));
    ui.passQuietTime();
    if (isMouse) {
      QTest::mouseRelease(&ui.window(), Qt::LeftButton, {}, place);
    } else {
      QTest::touchEvent(&ui.window(), finger()).release(0, place);
    }
    ui.settle();
    QCOMPARE(ui.text("btnPicking"), "Stop Picking");
    QCOMPARE(ui.text("lblItemCode"), "A");
    ui.touch("btnCancel");
    QTRY_VERIFY(!ui.shows("txtNewQty"));
    ui.touch("btnPicking");
    QTRY_COMPARE(ui.text("btnPicking"), "Start Picking");
  }

  void aPressThatIsRefusedStaysWithoutEffectUntilItsRelease() {
    TestWindow ui;
    ui.openBox(kLines);
    ui.touch("tblItemsRow0");
    QTRY_VERIFY(ui.shows("btn5"));
    ui.settle();
    ui.drawChanges();
    const QPoint key = TestWindow::visiblePart(ui.item("btn5")).center().toPoint();
    QTest::touchEvent(&ui.window(), finger()).press(0, key);
    ui.passQuietTime();
    QTest::touchEvent(&ui.window(), finger()).release(0, key);
    QCOMPARE(ui.text("txtNewQty"), "");
  }

  void aScanIsNotDelayed() {
    TestWindow ui;
    openKeypad(ui);
    ui.touch("btnCancel");
    ui.scan("B");
    QTRY_COMPARE(ui.text("lblItemCode"), "B");
  }

  void aKeyIsNotDelayed() {
    TestWindow ui;
    ui.enterPicking();
    ui.touch("btnClose");
    QTRY_COMPARE(ui.keyboard(), "alertButton1");
    ui.press(Qt::Key_Space);
    QTRY_COMPARE(ui.alerts(), QStringList());
  }

  void aPressByAScreenReaderIsNotDelayed() {
    TestWindow ui;
    ui.openBox(kLines);
    ui.touch("tblItemsRow0");
    QTRY_VERIFY(ui.shows("btn5"));
    QAccessibleInterface *key = QAccessible::queryAccessibleInterface(ui.item("btn5"));
    key->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(ui.text("txtNewQty"), "5");
  }
};

CARTONPICK_WINDOW_TEST(DoubleTapUiTest);
#include "DoubleTapUi_test.moc"
