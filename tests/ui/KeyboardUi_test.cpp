#include "store/ManagedObjectContext.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QImage>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>

namespace {

const QStringList kStart{"btnDisplay", "btnSegueToSplitView", "btnSegueHistory"};
const QStringList kSegments{"segmentedControl0", "segmentedControl1", "segmentedControl2",
                            "segmentedControl3"};
const QStringList kOpenBox = QStringList{"btnPicking", "btnReloadItems", "txtBox",    "tblBoxes",
                                         "txtBarcode", "pill",           "btnOptions"} +
                             kSegments + QStringList("tblItems");
const QStringList kSummary{"btnClose",
                           "segmentedControlStatus0",
                           "segmentedControlStatus1",
                           "segmentedControlStatus2",
                           "segmentedControlStatus3",
                           "tblPicking"};

const QList<TestLine> kLines{{"C1", "A", 5}, {"C1", "B", 2}, {"C2", "C", 1}};

/// Returns more lines than a pane can show at once.
QList<TestLine> manyLines() {
  QList<TestLine> lines;
  for (int i = 0; i < 60; ++i) {
    lines.append({QStringLiteral("C%1").arg(i % 30 + 1, 2, 10, QLatin1Char('0')),
                  QStringLiteral("I%1").arg(i, 2, 10, QLatin1Char('0')), 1});
    lines.append({QStringLiteral("C01"), QStringLiteral("J%1").arg(i, 2, 10, QLatin1Char('0')), 1});
  }
  return lines;
}

bool isControl(const QQuickItem *item) {
  const bool isRow = item->parentItem() != nullptr && item->inherits("QQuickItemDelegate");
  const bool isFullList = item->inherits("QQuickListView") && item->property("count").toInt() > 0;
  return (item->inherits("QQuickAbstractButton") && !isRow) || item->inherits("QQuickTextInput") ||
         isFullList;
}

/// Returns the names of the enabled controls on the sheet `root`, or on the whole screen if it is
/// empty.
QStringList controls(const TestWindow &ui, const QString &root) {
  QStringList names;
  for (const QQuickItem *item : ui.visibleItems(root.isEmpty() ? nullptr : ui.item(root))) {
    if (isControl(item) && item->isEnabled()) {
      names.append(item->objectName());
    }
  }
  return names;
}

/// Presses `key` until the focus returns to where it started. Returns the visited items.
QStringList focusCycle(TestWindow &ui, Qt::Key key) {
  constexpr int kMaxStops = 100;
  const QQuickItem *start = ui.window().activeFocusItem();
  QStringList names;
  do {
    ui.press(key);
    names.append(ui.focusStop());
  } while (ui.window().activeFocusItem() != start && names.size() < kMaxStops);
  return names;
}

QStringList startingWith(const QString &name, QStringList names) {
  if (names.contains(name)) {
    std::rotate(names.begin(), std::find(names.begin(), names.end(), name), names.end());
  }
  return names;
}

QStringList sorted(QStringList names) {
  names.sort();
  return names;
}

/// Returns the focused item; in a list, its current row.
QQuickItem *focused(const TestWindow &ui) {
  return ui.window().activeFocusItem();
}

int differences(const QImage &one, const QImage &other, QRect part) {
  int count = 0;
  part &= one.rect();
  for (int y = part.top(); y <= part.bottom(); ++y) {
    for (int x = part.left(); x <= part.right(); ++x) {
      count += one.pixel(x, y) == other.pixel(x, y) ? 0 : 1;
    }
  }
  return count;
}

/// Checks that every item that `key` visits has a visible focus ring: its surroundings look
/// different with and without the focus.
void everyFocusIsVisible(TestWindow &ui, qsizetype stops, Qt::Key key = Qt::Key_Tab) {
  constexpr int kRing = 6;
  for (qsizetype i = 0; i < stops; ++i) {
    const QRect place =
        TestWindow::visiblePart(focused(ui)).toAlignedRect().adjusted(-kRing, -kRing, kRing, kRing);
    const QString name = ui.focusStop();
    const QImage with = ui.window().grabWindow();
    ui.press(key);
    const QImage without = ui.window().grabWindow();
    QVERIFY2(differences(with, without, place) >= 2 * place.width(), qPrintable(name));
  }
}

/// Checks that Tab visits `names`, which are all enabled controls, in this order and in a cycle,
/// and that Shift+Tab visits them in reverse order.
void tabVisits(TestWindow &ui, const QStringList &names, const QString &sheet = {}) {
  ui.settle();
  QCOMPARE(sorted(controls(ui, sheet)), sorted(names));
  QCOMPARE(startingWith(names.first(), focusCycle(ui, Qt::Key_Tab)), names);
  QStringList back = names;
  std::reverse(back.begin(), back.end());
  QCOMPARE(startingWith(back.first(), focusCycle(ui, Qt::Key_Backtab)), back);
  everyFocusIsVisible(ui, names.size(), names.size() == 1 ? Qt::Key_Down : Qt::Key_Tab);
}

void storePicking(TestWindow &ui) {
  Picking picking{.barcode = "bA",
                  .box = "C1",
                  .datepicked = QDateTime(QDate(2026, 3, 2), QTime(6, 0), QTimeZone::utc()),
                  .descr = "Lantern",
                  .doc = "4711",
                  .item = "A",
                  .ordernum = "A1",
                  .orderqty = 5,
                  .pickqty = 3};
  ui.store().insert(picking);
  QVERIFY(!ui.store().save().has_value());
}

}  // namespace

/// The program, operated by keyboard only.
class KeyboardUiTest : public QObject {
  Q_OBJECT

 private slots:
  void tabCyclesThroughTheStartScreen() {
    TestWindow ui;
    tabVisits(ui, kStart);
  }

  void tabAlsoVisitsTheDemoButton() {
    TestWindow ui;
    ui.environment.serviceHost.clear();
    ui.restart();
    tabVisits(ui, kStart + QStringList("btnDemo"));
  }

  void tabStaysOnTheDisplaySheet() {
    TestWindow ui;
    ui.pressByKeys("btnDisplay");
    QTRY_COMPARE(ui.keyboard(), "btnDone");
    tabVisits(ui,
              {"segmTheme0", "segmTheme1", "segmTheme2", "segmTextSize0", "segmTextSize1",
               "segmTextSize2", "segmTextSize3", "btnDone"},
              "DisplayViewController");
    ui.press(Qt::Key_Escape);
    QTRY_VERIFY(!ui.shows("DisplayViewController"));
    QTRY_COMPARE(ui.keyboard(), "btnDisplay");
  }

  void tabCyclesThroughThePickingScreenBeforeALookup() {
    TestWindow ui;
    ui.enterPicking();
    tabVisits(ui, QStringList{"btnClose", "txtDeliveryNo", "btnSearch", "btnReloadItems", "pill"} +
                      kSegments);
  }

  void tabCyclesThroughThePickingScreenAfterALookup() {
    TestWindow ui;
    ui.enterPicking();
    ui.lookUp(kLines);
    tabVisits(ui, QStringList{"btnClose", "txtDeliveryNo", "btnSearch", "btnPicking",
                              "btnReloadItems", "pill"} +
                      kSegments);
  }

  void tabCyclesThroughThePickingScreenWithAnOpenBox_data() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("landscape") << QSize(1280, 800);
    QTest::newRow("portrait") << QSize(800, 1280);
  }

  void tabCyclesThroughThePickingScreenWithAnOpenBox() {
    QFETCH(const QSize, size);
    TestWindow ui(size);
    ui.openBox(kLines);
    tabVisits(ui, kOpenBox);
  }

  void tabStaysOnTheKeypad() {
    TestWindow ui;
    ui.openBox(kLines);
    ui.openKeypad();
    tabVisits(ui,
              {"txtNewQty", "btn7", "btn8", "btn9", "btn4", "btn5", "btn6", "btn1", "btn2", "btn3",
               "btnNegative", "btn0", "btnCancel", "btnOK"},
              "changeQuantityViewController");
  }

  void tabStaysInTheOptions() {
    TestWindow ui;
    ui.openBox(kLines);
    ui.pressByKeys("btnOptions");
    QTRY_VERIFY(ui.shows("tableViewRow2"));
    tabVisits(ui, {"tableView"}, "actionPickerViewController");
  }

  void tabStaysInTheScanTrail() {
    TestWindow ui;
    ui.openBox(kLines);
    for (const QString code : {"bA", "bB"}) {
      ui.scan(code);
      QTRY_VERIFY(ui.shows("txtNewQty"));
      ui.press(Qt::Key_Escape);
      QTRY_COMPARE(ui.focusStop(), "txtBarcode");
    }
    ui.pressByKeys("pill");
    QTRY_VERIFY(ui.shows("tblScansRow0"));
    tabVisits(ui, {"tblScans"}, "ScanTrailViewController");
    ui.press(Qt::Key_Escape);
    QTRY_VERIFY(!ui.shows("ScanTrailViewController"));
    QTRY_COMPARE(ui.keyboard(), "pill");
  }

  void tabCyclesThroughTheSummaryAndTheMasterPane() {
    TestWindow ui;
    ui.openBox(kLines);
    ui.pressByKeys("btnOptions");
    QTRY_COMPARE(ui.focusStop(), "tableView");
    ui.press(Qt::Key_Space);
    QTRY_COMPARE(ui.keyboard(), "btnClose");
    tabVisits(ui, QStringList{"btnPicking", "btnReloadItems", "txtBox", "tblBoxes"} + kSummary);
    ui.press(Qt::Key_Escape);
    QTRY_VERIFY(!ui.shows("deliveryDetailsViewController"));
  }

  void tabStaysInAnAlert() {
    TestWindow ui;
    ui.enterPicking();
    ui.pressByKeys("btnClose");
    QTRY_COMPARE(ui.keyboard(), "alertButton1");
    tabVisits(ui, {"alertButton0", "alertButton1"}, "alert");
  }

  void tabCyclesThroughTheHistoryAndItsSummary() {
    TestWindow ui;
    storePicking(ui);
    ui.pressByKeys("btnSegueHistory");
    QTRY_COMPARE(ui.keyboard(), "btnBack");
    tabVisits(ui, {"btnBack", "tblHistoryOverview"});
    ui.pressByKeys("tblHistoryOverview");
    QTRY_COMPARE(ui.keyboard(), "btnClose");
    tabVisits(ui, QStringList{"btnBack", "tblHistoryOverview"} + kSummary);
    ui.tabTo("tblPicking");
    ui.press(Qt::Key_Escape);
    QTRY_VERIFY(!ui.shows("deliveryDetailsViewController"));
    QTRY_COMPARE(ui.focusStop(), "tblHistoryOverview");
  }

  void theInitialFocusOfAScreenIsVisible() {
    TestWindow ui;
    everyFocusIsVisible(ui, 1);
    ui.enterPicking();
    everyFocusIsVisible(ui, 1);
    ui.touch("btnClose");
    QTRY_COMPARE(ui.keyboard(), "alertButton1");
    ui.settle();
    everyFocusIsVisible(ui, 1);
  }

  void arrowKeysMoveWithinAListAndSpaceActivatesTheRow() {
    TestWindow ui;
    ui.openBox(kLines);
    ui.tabTo("tblItems");
    ui.press(Qt::Key_Down);
    ui.press(Qt::Key_Space);
    QTRY_COMPARE(ui.text("lblItemCode"), "B");
    ui.press(Qt::Key_Escape);
    QTRY_VERIFY(!ui.shows("txtNewQty"));
    QTRY_COMPARE(ui.focusStop(), "tblItems");
    ui.press(Qt::Key_Space);
    QTRY_COMPARE(ui.text("lblItemCode"), "B");
    ui.press(Qt::Key_Escape);
    QTRY_VERIFY(!ui.shows("txtNewQty"));
    ui.press(Qt::Key_Up);
    ui.press(Qt::Key_Space);
    QTRY_COMPARE(ui.text("lblItemCode"), "A");
  }

  void theCurrentRowIsScrolledIntoView() {
    TestWindow ui;
    ui.openBox(manyLines());
    for (const QString table : {"tblBoxes", "tblItems"}) {
      ui.tabTo(table);
      const QRectF list = TestWindow::visiblePart(ui.item(table));
      const int count = ui.item(table)->property("count").toInt();
      QVERIFY(count >= 30);
      for (int row = 1; row < count; ++row) {
        ui.press(Qt::Key_Down);
        const QString name = QStringLiteral("%1Row%2").arg(table).arg(row);
        QTRY_VERIFY(ui.shows(name));
        QQuickItem *item = ui.item(name);
        QTRY_COMPARE(TestWindow::visiblePart(item).height(), item->height());
        QVERIFY(list.contains(TestWindow::visiblePart(item).center()));
      }
    }
  }

  void returnPressesNoButton() {
    TestWindow ui;
    ui.openBox(kLines);
    for (const QString &name : kOpenBox) {
      if (ui.item(name)->inherits("QQuickTextInput")) {
        continue;
      }
      ui.tabTo(name);
      ui.press(Qt::Key_Return);
      ui.press(Qt::Key_Enter);
      QCOMPARE(ui.focusStop(), name);
    }
    QCOMPARE(ui.text("btnPicking"), "Stop Picking");
    QVERIFY(!ui.shows("txtNewQty"));
  }

  void returnInTheBoxAndScanFieldsOpensTheBoxAndTheLine() {
    TestWindow ui;
    ui.startPicking(kLines);
    ui.type("C2");
    ui.press(Qt::Key_Return);
    QTRY_COMPARE(ui.focusStop(), "txtBarcode");
    ui.type("C");
    ui.press(Qt::Key_Return);
    QTRY_COMPARE(ui.text("lblItemCode"), "C");
  }

  void theFocusReturnsWhenTheOptionsClose() {
    TestWindow ui;
    ui.openBox(kLines);
    ui.touch("btnOptions");
    QTRY_COMPARE(ui.focusStop(), "tableView");
    ui.press(Qt::Key_Escape);
    QTRY_COMPARE(ui.focusStop(), "txtBarcode");
  }

  void theFocusReturnsAfterAlertsOpenedByTheOptions() {
    TestWindow ui;
    ui.openBox(kLines);
    ui.openKeypad();
    ui.confirm("5");
    ui.service.answerWith("\"0\"");
    ui.touch("btnOptions");
    ui.touch("tableViewRow2");
    ui.touch("alertButton1");
    QTRY_COMPARE(ui.alerts().size(), 1);
    QTRY_COMPARE(ui.keyboard(), "alertButton0");
    ui.press(Qt::Key_Space);
    QTRY_COMPARE(ui.alerts(), QStringList());
    QTRY_COMPARE(ui.focusStop(), "txtBarcode");
  }

  void theFocusReturnsWhenTheSummaryCloses() {
    TestWindow ui;
    ui.openBox(kLines);
    ui.touch("btnOptions");
    ui.touch("tableViewRow0");
    QTRY_COMPARE(ui.keyboard(), "btnClose");
    ui.press(Qt::Key_Escape);
    QTRY_COMPARE(ui.focusStop(), "txtBarcode");
  }

  void theFocusReturnsAfterAFailedLookup_data() {
    QTest::addColumn<QString>("expected");
    QTest::newRow("by touch") << "txtDeliveryNo";
    QTest::newRow("by keyboard") << "btnSearch";
  }

  void theFocusReturnsAfterAFailedLookup() {
    QFETCH(const QString, expected);
    TestWindow ui;
    ui.enterPicking();
    ui.type("4711");
    if (expected == "btnSearch") {
      ui.pressByKeys(expected);
    } else {
      ui.touch("btnSearch");
    }
    QTRY_COMPARE(ui.keyboard(), "alertButton0");
    ui.press(Qt::Key_Escape);
    QTRY_COMPARE(ui.alerts(), QStringList());
    QTRY_COMPARE(ui.keyboard(), expected);
  }

  void afterALookupTheNextTabStopIsStartPicking() {
    TestWindow ui;
    ui.enterPicking();
    ui.service.answerWith(deliveryJson(kLines));
    ui.type("4711");
    ui.pressByKeys("btnSearch");
    QTRY_VERIFY(ui.isEnabled("btnPicking") && !ui.shows("busy"));
    ui.press(Qt::Key_Tab);
    QCOMPARE(ui.keyboard(), "btnPicking");
  }

  void theFocusReturnsAfterTwoAlerts() {
    TestWindow ui;
    ui.environment.serviceHost = LoopbackService::unreachableHost();
    ui.enterPicking();
    ui.type("4711");
    ui.touch("btnSearch");
    QTRY_COMPARE(ui.alerts().size(), 2);
    ui.press(Qt::Key_Escape);
    QTRY_COMPARE(ui.alerts().size(), 1);
    QTRY_COMPARE(ui.keyboard(), "alertButton0");
    ui.press(Qt::Key_Space);
    QTRY_COMPARE(ui.focusStop(), "txtDeliveryNo");
  }

  void theFocusReturnsAfterAnotherWindowHadIt_data() {
    QTest::addColumn<QStringList>("touches");
    QTest::addColumn<QString>("expected");
    QTest::newRow("to the keypad") << QStringList("tblItemsRow0") << "txtNewQty";
    QTest::newRow("to an alert") << QStringList({"btnOptions", "tableViewRow2"}) << "alertButton0";
    QTest::newRow("to the options") << QStringList("btnOptions") << "tableView";
    QTest::newRow("to the scan field") << QStringList() << "txtBarcode";
  }

  void theFocusReturnsAfterAnotherWindowHadIt() {
    QFETCH(const QStringList, touches);
    QFETCH(const QString, expected);
    TestWindow ui;
    ui.openBox(kLines);
    for (const QString &target : touches) {
      ui.touch(target);
    }
    QTRY_COMPARE(ui.focusStop(), expected);
    ui.switchToAnotherWindowAndBack();
    QTRY_COMPARE(ui.focusStop(), expected);
  }

  void theFocusReturnsToTheHistoryButton() {
    TestWindow ui;
    ui.pressByKeys("btnSegueHistory");
    QTRY_COMPARE(ui.keyboard(), "btnBack");
    ui.press(Qt::Key_Space);
    QTRY_COMPARE(ui.keyboard(), "btnSegueHistory");
  }
};

CARTONPICK_WINDOW_TEST(KeyboardUiTest);
#include "KeyboardUi_test.moc"
