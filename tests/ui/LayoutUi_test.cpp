#include "picking/detailViewController.h"
#include "store/ManagedObjectContext.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QAccessible>
#include <QFont>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>
#include <utility>

namespace {

constexpr double kMinTouchTarget = 56.0;
constexpr double kMinKeypadKey = 72.0;
constexpr int kMinFontSize = 18;
/// Neighbouring segments share a border.
constexpr double kSharedBorder = 2.0;

QAccessible::Role roleOf(QQuickItem *item) {
  QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
  return interface == nullptr ? QAccessible::NoRole : interface->role();
}

/// Returns true if `item` reacts to touch.
bool isInteractive(QQuickItem *item) {
  const QAccessible::Role role = roleOf(item);
  return role == QAccessible::Button || role == QAccessible::RadioButton ||
         role == QAccessible::EditableText || role == QAccessible::ListItem;
}

QRectF placeOf(QQuickItem *item) {
  return item->mapRectToScene({0, 0, item->width(), item->height()});
}

/// Returns true if a part of `item` is scrolled out of view.
bool isClipped(QQuickItem *item) {
  const QRectF place = placeOf(item);
  for (const QQuickItem *outer = item->parentItem(); outer != nullptr;
       outer = outer->parentItem()) {
    const QRectF window = outer->mapRectToScene(outer->clipRect()).adjusted(-1, -1, 1, 1);
    if (outer->clip() && !window.contains(place)) {
      return true;
    }
  }
  return false;
}

/// Returns true for names, the only texts that are allowed to be elided.
bool mayBeElided(const QQuickItem *item) {
  static const QStringList kNames{QStringLiteral("descr"), QStringLiteral("lblItemDescription"),
                                  QStringLiteral("lblCustomerName"), QStringLiteral("lblBrand")};
  return kNames.contains(item->objectName());
}

bool isText(const QQuickItem *item) {
  return (item->inherits("QQuickText") || item->inherits("QQuickTextInput")) &&
         !item->property("text").toString().isEmpty();
}

QByteArray describe(QQuickItem *item) {
  const QRectF place = placeOf(item);
  return QStringLiteral("%1 \"%2\" at %3,%4 %5x%6")
      .arg(item->objectName(), item->property("text").toString())
      .arg(place.x())
      .arg(place.y())
      .arg(place.width())
      .arg(place.height())
      .toUtf8();
}

bool overlap(QQuickItem *a, QQuickItem *b) {
  const QRectF common = TestWindow::visiblePart(a) & TestWindow::visiblePart(b);
  return !a->isAncestorOf(b) && !b->isAncestorOf(a) && common.width() > kSharedBorder &&
         common.height() > kSharedBorder;
}

void checkTouchTargets(const QList<QQuickItem *> &items, QSizeF window, double smallest) {
  QList<QQuickItem *> targets;
  std::copy_if(items.begin(), items.end(), std::back_inserter(targets),
               [](QQuickItem *item) { return isInteractive(item) && !isClipped(item); });
  for (QQuickItem *target : std::as_const(targets)) {
    QVERIFY2(QRectF({}, window).contains(placeOf(target)), describe(target));
    QVERIFY2(target->height() >= smallest, describe(target));
    for (QQuickItem *other : std::as_const(targets)) {
      QVERIFY2(target == other || !overlap(target, other), describe(target) + describe(other));
    }
  }
}

/// Returns true if the whole text is drawn within its item.
bool fits(const QQuickItem *text) {
  constexpr double kRounding = 1.0;
  const auto extent = [&](const char *name) { return text->property(name).toDouble() - kRounding; };
  const bool scrollsItself = text->inherits("QQuickTextInput");
  return extent("contentHeight") <= text->height() &&
         (scrollsItself || extent("contentWidth") <= text->width());
}

void checkTexts(const QList<QQuickItem *> &items, QSizeF window, double textScale) {
  const double smallest = kMinFontSize * textScale;
  QList<QQuickItem *> texts;
  std::copy_if(items.begin(), items.end(), std::back_inserter(texts), [](QQuickItem *item) {
    return isText(item) && !TestWindow::visiblePart(item).isEmpty();
  });
  QVERIFY(!texts.isEmpty());
  for (QQuickItem *text : std::as_const(texts)) {
    QVERIFY2(text->property("font").value<QFont>().pixelSize() >= smallest, describe(text));
    if (text->property("fontSizeMode").toInt() != 0) {
      QVERIFY2(text->property("minimumPixelSize").toInt() >= smallest, describe(text));
    }
    QVERIFY2(QRectF({}, window).contains(TestWindow::visiblePart(text)), describe(text));
    QVERIFY2(mayBeElided(text) || !text->property("truncated").toBool(), describe(text));
    QVERIFY2(fits(text), describe(text));
    for (QQuickItem *other : items) {
      const bool mustNotOverlap = isText(other) || isInteractive(other);
      QVERIFY2(text == other || !mustNotOverlap || !overlap(text, other),
               describe(text) + describe(other));
    }
  }
}

/// Returns the scrollable panes among `items`, without the lists.
QList<QQuickItem *> scrollablePanes(const QList<QQuickItem *> &items) {
  QList<QQuickItem *> panes;
  std::copy_if(items.begin(), items.end(), std::back_inserter(panes), [](const QQuickItem *item) {
    return item->inherits("QQuickFlickable") && !item->inherits("QQuickItemView") &&
           item->property("contentHeight").toDouble() > item->height();
  });
  return panes;
}

/// Scrolls `pane` to `top`, or to its end if that comes first. Returns false at the end.
bool scrollTo(QQuickItem *pane, double top) {
  const double end = pane->property("contentHeight").toDouble() - pane->height();
  pane->setProperty("contentY", std::clamp(top, 0.0, end));
  return top < end;
}

/// Scrolls to `name` and touches it.
void touch(TestWindow &ui, const QString &name) {
  QTRY_VERIFY2(ui.shows(name), qPrintable(name));
  QQuickItem *item = ui.item(name);
  for (QQuickItem *pane : scrollablePanes(ui.visibleItems())) {
    if (pane->isAncestorOf(item)) {
      const double place = item->mapToItem(pane, QPointF()).y();
      scrollTo(pane, pane->property("contentY").toDouble() + place - pane->height() / 3);
    }
  }
  ui.touch(name);
}

}  // namespace

/// Every screen, in every supported window and text size.
class LayoutUiTest : public QObject {
  Q_OBJECT

 private slots:
  void everyScreenFits_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("textSize");
    constexpr QSize kSmall{1024, 768};
    constexpr QSize kPortrait{800, 1280};
    const std::pair<QSize, int> cases[] = {
        {kSmall, 100}, {{1280, 800}, 100}, {{1920, 1200}, 100}, {kPortrait, 100},
        {kSmall, 125}, {{1280, 800}, 150}, {kSmall, 200},       {kPortrait, 200}};
    for (const auto &[size, textSize] : cases) {
      QTest::addRow("%dx%d, %d %%", size.width(), size.height(), textSize) << size << textSize;
    }
  }

  void everyScreenFits() {
    QFETCH(const QSize, size);
    QFETCH(const int, textSize);
    TestWindow ui(size);
    ui.environment.display->setTextSize(textSize);
    for (const auto step : {openPicking, lookUp, pick, finishPicking}) {
      step(ui);
      if (QTest::currentTestFailed()) {
        return;
      }
    }
  }

  void theStartScreenWithoutAnOrderServiceFits_data() { everyScreenFits_data(); }

  void theStartScreenWithoutAnOrderServiceFits() {
    QFETCH(const QSize, size);
    QFETCH(const int, textSize);
    TestWindow ui(size);
    ui.environment.display->setTextSize(textSize);
    ui.environment.serviceHost.clear();
    ui.restart();
    QVERIFY(ui.shows("btnDemo"));
    check(ui, "startViewController");
  }

  void aLongAlertFits_data() { everyScreenFits_data(); }

  void aLongAlertFits() {
    QFETCH(const QSize, size);
    QFETCH(const int, textSize);
    TestWindow ui(size);
    ui.environment.display->setTextSize(textSize);
    ui.environment.alerts.show(
        {.title = QStringLiteral("Could not fetch order details of this delivery"),
         .message = QStringLiteral("The order service did not answer. ").repeated(40),
         .buttons = {QStringLiteral("Try it once more"), QStringLiteral("Give up for now")},
         .cancelButtonIndex = 1});
    check(ui, "alert");
  }

  void theKeypadKeysAreLargeAndDoNotOverlap_data() { everyScreenFits_data(); }

  void theKeypadKeysAreLargeAndDoNotOverlap() {
    QFETCH(const QSize, size);
    QFETCH(const int, textSize);
    TestWindow ui(size);
    ui.openBox({{"C1", "A", 6}});
    ui.openKeypad();
    ui.touch("btn0");
    ui.environment.display->setTextSize(textSize);
    ui.settle();
    checkTouchTargets(ui.visibleItems(ui.item("changeQuantityViewController")), size,
                      kMinKeypadKey);
  }

  void theTotalHasTheLargestFontOnTheKeypad_data() { everyScreenFits_data(); }

  void theTotalHasTheLargestFontOnTheKeypad() {
    QFETCH(const QSize, size);
    QFETCH(const int, textSize);
    TestWindow ui(size);
    ui.openBox({{"C1", "A", 6}});
    ui.openKeypad();
    ui.environment.display->setTextSize(textSize);
    ui.settle();
    const auto sizeOf = [](const QQuickItem *text) {
      return text->property("font").value<QFont>().pixelSize();
    };
    const QQuickItem *total = ui.item("lblTotalQty");
    for (QQuickItem *item : ui.visibleItems(ui.item("changeQuantityViewController"))) {
      QVERIFY2(!isText(item) || item == total || sizeOf(item) < sizeOf(total), describe(item));
    }
  }

  void theFocusedFieldIsScrolledIntoView() {
    TestWindow ui({1024, 768});
    ui.enterPicking();
    ui.lookUp({{"C1", "A", 6}});
    ui.environment.display->setTextSize(200);
    touch(ui, "btnPicking");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBox"));
    QTRY_VERIFY(!isClipped(ui.item("txtBox")));
    QVERIFY(!scrollablePanes(ui.visibleItems(ui.item("masterViewController"))).isEmpty());
  }

  void aPaneThatDoesNotFitCanBeScrolledByTouch() {
    TestWindow ui({1024, 768});
    ui.environment.display->setTextSize(200);
    ui.enterPicking();
    ui.settle();
    QVERIFY(isClipped(ui.item("txtBox")));
    static QPointingDevice *finger = QTest::createTouchDevice();
    const QPoint from(150, 700);
    ui.passQuietTime();
    QTest::touchEvent(&ui.window(), finger).press(0, from);
    for (int step = 1; step <= 10; ++step) {
      QTest::touchEvent(&ui.window(), finger).move(0, from - QPoint(0, 60 * step));
      // Qt merges the touch moves between two frames.
      ui.settle();
    }
    QTest::touchEvent(&ui.window(), finger).release(0, from - QPoint(0, 600));
    ui.settle();
    QVERIFY(!isClipped(ui.item("txtBox")));
  }

 private:
  static void openPicking(TestWindow &ui) {
    check(ui, "startViewController");
    touch(ui, "btnDisplay");
    check(ui, "DisplayViewController");
    touch(ui, "btnDone");
    QTRY_VERIFY(!ui.shows("btnDone"));
    ui.enterPicking();
    check(ui, "splitViewController");
    touch(ui, "btnClose");
    check(ui, "alert");
    touch(ui, "alertButton1");
    QTRY_COMPARE(ui.alerts(), QStringList());
  }

  static void lookUp(TestWindow &ui) {
    const QByteArray longDescription =
        "HANGING HEART T-LIGHT HOLDER OF HAND PAINTED CREAM WOOD, 12";
    ui.service.answerWith(deliveryJson({{"C1", "84406B-XL-2026", 6, "05012345678900"},
                                        {"C1", "71053", 20},
                                        {"C2", "85123A", 8}})
                              .replace("Description of 84406B-XL-2026", longDescription));
    touch(ui, "txtDeliveryNo");
    ui.type("4711");
    touch(ui, "btnSearch");
    QTRY_VERIFY(ui.isEnabled("btnPicking") && !ui.shows("busy"));
    touch(ui, "pill");
    check(ui, "ScanTrailViewController");
    closePopover(ui, "ScanTrailViewController");
  }

  static void pick(TestWindow &ui) {
    touch(ui, "btnPicking");
    touch(ui, "tblBoxesRow0");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
    touch(ui, "tblItemsRow0");
    check(ui, "changeQuantityViewController");
    ui.touch("btnNegative");
    for (const QChar digit : QStringLiteral("2147483648")) {
      ui.touch(QStringLiteral("btn") + digit);
    }
    QCOMPARE(ui.text("lblTotalQty"), QString("-2147483648"));
    check(ui, "changeQuantityViewController");
    ui.touch("btnCancel");
    QTRY_VERIFY(!ui.shows("txtNewQty"));
    touch(ui, "tblItemsRow0");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtNewQty"));
    ui.confirm("12");
    check(ui, "splitViewController");
    auto *detail =
        ui.item("detailViewController")->property("controller").value<detailViewController *>();
    for (const ScanOutcome outcome : {ScanOutcome::Found, ScanOutcome::Booked, ScanOutcome::Loose,
                                      ScanOutcome::Unknown, ScanOutcome::Refused}) {
      detail->scanTrail().add({.code = "84406B-XL-2026", .outcome = outcome, .line = 12});
    }
    touch(ui, "pill");
    check(ui, "ScanTrailViewController");
    closePopover(ui, "ScanTrailViewController");
  }

  static void finishPicking(TestWindow &ui) {
    touch(ui, "btnOptions");
    check(ui, "actionPickerViewController");
    touch(ui, "tableViewRow0");
    touch(ui, "deliveryDetailsViewController/segmentedControlStatus0");
    check(ui, "deliveryDetailsViewController");
    touch(ui, "deliveryDetailsViewController/btnClose");
    QTRY_VERIFY(ui.isEnabled("txtBarcode"));
    touch(ui, "btnPicking");
    touch(ui, "btnClose");
    touch(ui, "alertButton0");
    touch(ui, "btnSegueHistory");
    QTRY_VERIFY(ui.shows("tblHistoryOverviewRow0"));
    check(ui, "HistoryViewController");
    touch(ui, "tblHistoryOverviewRow0");
    touch(ui, "deliveryDetailsViewController/segmentedControlStatus0");
    check(ui, "deliveryDetailsViewController");
  }

  static void closePopover(TestWindow &ui, const QString &screen) {
    ui.press(Qt::Key_Escape);
    QTRY_VERIFY(!ui.shows(screen));
  }

  /// Checks `screen` while scrolling through its panes by half a page.
  static void check(TestWindow &ui, const QString &screen) {
    QTRY_VERIFY(ui.shows(screen));
    QTRY_VERIFY(!ui.shows("busy"));
    ui.settle();
    const QSizeF window = ui.window().size();
    const double textScale = ui.environment.display->textScale();
    const QList<QQuickItem *> panes = scrollablePanes(ui.visibleItems(ui.item(screen)));
    bool isAtEnd = false;
    for (int page = 0; !isAtEnd; ++page) {
      isAtEnd = true;
      for (QQuickItem *pane : panes) {
        isAtEnd = !scrollTo(pane, page * pane->height() / 2) && isAtEnd;
      }
      const QList<QQuickItem *> items = ui.visibleItems(ui.item(screen));
      checkTouchTargets(items, window, kMinTouchTarget);
      checkTexts(items, window, textScale);
      if (QTest::currentTestFailed()) {
        return;
      }
    }
    for (QQuickItem *pane : panes) {
      scrollTo(pane, 0);
    }
  }
};

CARTONPICK_WINDOW_TEST(LayoutUiTest);
#include "LayoutUi_test.moc"
