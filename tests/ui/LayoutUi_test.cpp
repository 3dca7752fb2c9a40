#include "app/store/ManagedObjectContext.h"
#include "support/TestWindow.h"

#include <QAccessible>
#include <QFont>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>

namespace {

constexpr double kTouch = 56.0;
constexpr double kKey = 72.0;
constexpr int kSmallestFont = 18;
/// Neighbouring segments share a border.
constexpr double kSharedBorder = 2.0;

QAccessible::Role roleOf(QQuickItem *item) {
  QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
  return interface == nullptr ? QAccessible::NoRole : interface->role();
}

/// Whether a finger can do something with `item`.
bool isInteractive(QQuickItem *item) {
  const QAccessible::Role role = roleOf(item);
  return role == QAccessible::Button || role == QAccessible::RadioButton ||
         role == QAccessible::EditableText || role == QAccessible::ListItem;
}

QRectF placeOf(QQuickItem *item) {
  return item->mapRectToScene({0, 0, item->width(), item->height()});
}

/// Whether the list that `item` is a row of has been scrolled so that the row is cut.
bool isCut(QQuickItem *item) {
  return TestWindow::visiblePart(item) != placeOf(item);
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
         common.height() > 1.0;
}

void everythingCanBeHit(const QList<QQuickItem *> &items, QSizeF window, double smallest) {
  QList<QQuickItem *> targets;
  std::copy_if(items.begin(), items.end(), std::back_inserter(targets),
               [](QQuickItem *item) { return isInteractive(item) && !isCut(item); });
  QVERIFY(!targets.isEmpty());
  for (QQuickItem *target : std::as_const(targets)) {
    QVERIFY2(QRectF({}, window).contains(placeOf(target)), describe(target));
    QVERIFY2(target->height() >= smallest, describe(target));
    for (QQuickItem *other : std::as_const(targets)) {
      QVERIFY2(target == other || !overlap(target, other), describe(target) + describe(other));
    }
  }
}

void everythingCanBeRead(const QList<QQuickItem *> &items, QSizeF window) {
  QList<QQuickItem *> texts;
  std::copy_if(items.begin(), items.end(), std::back_inserter(texts), isText);
  QVERIFY(!texts.isEmpty());
  for (QQuickItem *text : std::as_const(texts)) {
    QVERIFY2(text->property("font").value<QFont>().pixelSize() >= kSmallestFont, describe(text));
    if (text->property("fontSizeMode").toInt() != 0) {
      QVERIFY2(text->property("minimumPixelSize").toInt() >= kSmallestFont, describe(text));
    }
    QVERIFY2(QRectF({}, window).contains(TestWindow::visiblePart(text)), describe(text));
    QVERIFY2(!text->property("truncated").toBool(), describe(text));
    for (QQuickItem *other : std::as_const(texts)) {
      QVERIFY2(text == other || !overlap(text, other), describe(text) + describe(other));
    }
  }
}

}  // namespace

/// Every screen, at every size that it has to work at.
class LayoutUiTest : public QObject {
  Q_OBJECT

 private slots:
  void everyScreenFits_data() {
    QTest::addColumn<QSize>("size");
    for (const QSize size :
         {QSize(1024, 768), QSize(1280, 800), QSize(1920, 1200), QSize(800, 1280)}) {
      QTest::addRow("%dx%d", size.width(), size.height()) << size;
    }
  }

  void everyScreenFits() {
    QFETCH(const QSize, size);
    TestWindow ui(size);
    check(ui, "startViewController");
    ui.enterPicking();
    check(ui, "splitViewController");
    ui.touch("btnClose");
    check(ui, "alert");
    ui.touch("alertButton1");
    QTRY_COMPARE(ui.alerts(), QStringList());
    ui.lookUp({{"C1", "85123A", 6, "5012345678900"}, {"C1", "71053", 20}, {"C2", "84406B", 8}});
    ui.touch("btnPicking");
    ui.touch("tblBoxesRow0");
    ui.openKeypad(1);
    check(ui, "changeQuantityViewController");
    ui.confirm("12");
    check(ui, "splitViewController");
    ui.touch("btnOptions");
    check(ui, "actionPickerViewController");
    ui.touch("tableViewRow0");
    ui.touch("deliveryDetailsViewController/segmentedControlStatus0");
    check(ui, "deliveryDetailsViewController");
    ui.touch("deliveryDetailsViewController/btnClose");
    QTRY_VERIFY(ui.isEnabled("txtBarcode"));
    ui.touch("btnPicking");
    ui.touch("btnClose");
    ui.touch("alertButton0");
    ui.touch("btnSegueHistory");
    QTRY_VERIFY(ui.shows("tblHistoryOverviewRow0"));
    check(ui, "HistoryViewController");
    ui.touch("tblHistoryOverviewRow0");
    ui.touch("deliveryDetailsViewController/segmentedControlStatus0");
    check(ui, "deliveryDetailsViewController");
  }

  void theKeysOfTheKeypadCanBeHitBlind_data() { everyScreenFits_data(); }

  void theKeysOfTheKeypadCanBeHitBlind() {
    QFETCH(const QSize, size);
    TestWindow ui(size);
    ui.openBox({{"C1", "A", 6}});
    ui.openKeypad();
    ui.touch("btn0");
    everythingCanBeHit(ui.visibleItems(ui.item("changeQuantityViewController")), size, kKey);
  }

 private:
  static void check(TestWindow &ui, const QString &screen) {
    QTRY_VERIFY(ui.shows(screen));
    QTRY_VERIFY(!ui.shows("busy"));
    ui.settle();
    const QSizeF window = ui.window().size();
    everythingCanBeHit(ui.visibleItems(ui.item(screen)), window, kTouch);
    everythingCanBeRead(ui.visibleItems(ui.item(screen)), window);
  }
};

QTEST_MAIN(LayoutUiTest)
#include "LayoutUi_test.moc"
