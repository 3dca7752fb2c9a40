#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>
#include <utility>

namespace {

/// Returns what a screen reader announces for `name`: "role|name" or "role|name|description".
QString announcementOf(const TestWindow &ui, const QString &name) {
  QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(ui.item(name));
  if (interface == nullptr) {
    return {};
  }
  const QHash<QAccessible::Role, QString> roles{{QAccessible::Button, "button"},
                                                {QAccessible::EditableText, "field"},
                                                {QAccessible::RadioButton, "segment"},
                                                {QAccessible::ListItem, "row"},
                                                {QAccessible::StaticText, "label"},
                                                {QAccessible::Dialog, "dialog"},
                                                {QAccessible::Heading, "heading"},
                                                {QAccessible::Notification, "notification"},
                                                {QAccessible::Grouping, "group"},
                                                {QAccessible::List, "list"},
                                                {QAccessible::Pane, "pane"}};
  QStringList parts{roles.value(interface->role()), interface->text(QAccessible::Name)};
  const QString description = interface->text(QAccessible::Description);
  return (description.isEmpty() ? parts : parts << description).join(u'|');
}

void collectRows(QAccessibleInterface *interface, QStringList &names) {
  for (int i = 0; i < interface->childCount(); ++i) {
    QAccessibleInterface *child = interface->child(i);
    if (child->role() == QAccessible::ListItem) {
      names.append(child->text(QAccessible::Name));
    }
    collectRows(child, names);
  }
}

/// The sorted names of the rows of `list` in the tree of a screen reader.
QStringList rowsInTree(const TestWindow &ui, const QString &list) {
  QStringList names;
  collectRows(QAccessible::queryAccessibleInterface(ui.item(list)), names);
  names.sort();
  return names;
}

/// Returns the name of a row of the pick table.
QString lineName(const QString &item, int picked, int ordered) {
  return QStringLiteral("%1, b%1, Description of %1, picked %2, ordered %3, difference %4")
      .arg(item)
      .arg(picked)
      .arg(ordered)
      .arg(picked - ordered);
}

using Expected = QList<std::pair<const char *, const char *>>;

void compare(const TestWindow &ui, const Expected &expected) {
  for (const auto &[name, text] : expected) {
    QTRY_COMPARE(announcementOf(ui, name), text);
  }
}

void checkOnlyCheckedSegment(const TestWindow &ui, int chosen) {
  for (int segment = 0; segment < 4; ++segment) {
    QQuickItem *item = ui.item(QStringLiteral("segmentedControl%1").arg(segment));
    QTRY_COMPARE(bool(QAccessible::queryAccessibleInterface(item)->state().checked),
                 segment == chosen);
  }
}

/// Presses `name` as a screen reader does.
void pressByScreenReader(const TestWindow &ui, const QString &name) {
  QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(ui.item(name));
  QVERIFY2(interface != nullptr, qPrintable(name));
  interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

/// Returns true if `item` or an item in it is named `name`.
bool containsName(const TestWindow &ui, QQuickItem *item, const QString &name) {
  const QList<QQuickItem *> items = ui.visibleItems(item);
  return std::any_of(items.begin(), items.end(),
                     [&](const QQuickItem *inner) { return inner->objectName() == name; });
}

void checkOutletNames(const TestWindow &ui) {
  for (QQuickItem *item : ui.visibleItems()) {
    const auto *outlet = item->property("outlet").value<QObject *>();
    if (outlet != nullptr) {
      QVERIFY2(containsName(ui, item, outlet->objectName()), qPrintable(outlet->objectName()));
    }
  }
}

}  // namespace

/// Roles, names and descriptions for screen readers and UI automation.
class ScreenReaderUiTest : public QObject {
  Q_OBJECT

 private slots:
  void theStartScreenIsAccessible() {
    TestWindow ui;
    compare(ui, {{"btnSegueToSplitView", "button|Picking"}, {"btnSegueHistory", "button|History"}});
    checkOutletNames(ui);
  }

  void theMasterPaneIsAccessible() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    compare(ui, {{"txtDeliveryNo", "field|Delivery number"},
                 {"txtBox", "field|Box"},
                 {"btnSearch", "button|Search"},
                 {"btnPicking", "button|Stop Picking"},
                 {"btnReloadItems", "button|Reload Items"},
                 {"btnClose", "button|Close"},
                 {"lblBoxesTotalValue", "label|1|Boxes"},
                 {"lblBoxesUnopenedValue", "label|1|Unopened"},
                 {"lblBoxesCompletedValue", "label|0|Completed"},
                 {"lblBoxesIncompleteValue", "label|0|Incomplete"},
                 {"tblBoxes", "list|Boxes"},
                 {"tblBoxesRow0", "row|Box C1, picked 0, ordered 5, unopened"}});
    QCOMPARE(ui.texts({"lblBoxesTotalLabel", "lblBoxesUnopenedLabel", "lblBoxesCompletedLabel",
                       "lblBoxesIncompleteLabel"}),
             QStringList({"Boxes", "Unopened", "Completed", "Incomplete"}));
    checkOutletNames(ui);
  }

  void theDetailPaneIsAccessible() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    compare(ui,
            {{"txtBarcode", "field|Item or barcode"},
             {"pill", "button|Ready to scan|Shows the last scans"},
             {"segmentedControl", "group|Filter"},
             {"segmentedControl0", "segment|All"},
             {"segmentedControl1", "segment|Not picked"},
             {"segmentedControl2", "segment|Different"},
             {"segmentedControl3", "segment|Matching"},
             {"btnOptions", "button|Options"},
             {"lblOpenBox", "label|C1|Box"},
             {"lblTotalPick", "label|0|Picked"},
             {"lblTotalOrder", "label|5|Ordered"},
             {"lblTotalDiff", "label|-5|Difference"},
             {"tblItems", "list|Lines"},
             {"tblItemsRow0", "row|A, bA, Description of A, picked 0, ordered 5, difference -5"}});
  }

  void theSelectedSegmentIsReportedAsChecked() {
    TestWindow ui;
    ui.enterPicking();
    checkOnlyCheckedSegment(ui, 0);
    ui.touch("segmentedControl2");
    checkOnlyCheckedSegment(ui, 2);
  }

  void theScanTrailIsAccessible() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    ui.scan("A");
    QTRY_VERIFY(ui.shows("txtNewQty"));
    ui.touch("btnCancel");
    ui.touch("pill");
    compare(ui, {{"ScanTrailViewController", "dialog|Last scans"},
                 {"tblScansRow0", "row|10:12:05, A, Line 1, not booked"}});
  }

  void theDisplaySheetIsAccessible() {
    TestWindow ui;
    ui.touch("btnDisplay");
    compare(ui, {{"DisplayViewController", "dialog|Display"},
                 {"segmTheme", "group|Theme"},
                 {"segmTheme0", "segment|System"},
                 {"segmTextSize", "group|Text size"},
                 {"btnDone", "button|Done"}});
    checkOutletNames(ui);
  }

  void aPressDoesNotReachControlsUnderASheet() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    ui.openKeypad();
    for (const QString name : {"btnPicking", "pill", "segmentedControl1", "tblBoxesRow0"}) {
      pressByScreenReader(ui, name);
    }
    QCOMPARE(ui.text("btnPicking"), "Stop Picking");
    checkOnlyCheckedSegment(ui, 0);
    QVERIFY(!ui.shows("ScanTrailViewController"));
    pressByScreenReader(ui, "btnCancel");
    QTRY_VERIFY(!ui.shows("txtNewQty"));
    pressByScreenReader(ui, "btnPicking");
    QTRY_COMPARE(ui.text("btnPicking"), "Start Picking");
  }

  void aPressIsHandledAfterTheKeyBeforeIt() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    ui.openKeypad();
    // The press follows so soon that the key may still be held back.
    QTest::keyClick(&ui.window(), Qt::Key_4);
    pressByScreenReader(ui, "btnOK");
    QTRY_COMPARE(ui.text("tblItemsRow0/pickqty"), "4");
  }

  void theTreeHasTheRowsOnTheScreen() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}, {"C1", "B", 2}, {"C1", "C", 3}, {"C2", "D", 1}});
    const QStringList three{lineName("A", 0, 5), lineName("B", 0, 2), lineName("C", 0, 3)};
    QTRY_COMPARE(rowsInTree(ui, "tblItems"), three);
    ui.touch("tblBoxesRow1");
    QTRY_COMPARE(rowsInTree(ui, "tblItems"), QStringList(lineName("D", 0, 1)));
    ui.touch("tblBoxesRow0");
    QTRY_COMPARE(rowsInTree(ui, "tblItems"), three);
    ui.openKeypad(1);
    ui.confirm("2");
    QTRY_COMPARE(rowsInTree(ui, "tblItems"),
                 QStringList({lineName("A", 0, 5), lineName("B", 2, 2), lineName("C", 0, 3)}));
    QTRY_COMPARE(rowsInTree(ui, "tblBoxes"),
                 QStringList({"Box C1, picked 2, ordered 10, incomplete",
                              "Box C2, picked 0, ordered 1, unopened"}));
    ui.touch("segmentedControl3");
    QTRY_COMPARE(rowsInTree(ui, "tblItems"), QStringList(lineName("B", 2, 2)));
    ui.touch("segmentedControl1");
    QTRY_COMPARE(rowsInTree(ui, "tblItems"),
                 QStringList({lineName("A", 0, 5), lineName("C", 0, 3)}));
    ui.touch("btnPicking");
    QTRY_COMPARE(rowsInTree(ui, "tblItems"), QStringList());
  }

  void theTreeHasOnlyRowsNearTheScreenInALongList() {
    QList<TestLine> lines;
    for (int i = 0; i < 60; ++i) {
      lines.append({"C1", QStringLiteral("I%1").arg(i, 2, 10, QLatin1Char('0')), 1});
    }
    TestWindow ui;
    ui.openBox(lines);
    QTRY_VERIFY(ui.shows("tblItemsRow0"));
    const double height = ui.item("tblItemsRow0")->height();
    for (const int first : {20, 50, 5, 40, 0}) {
      ui.item("tblItems")->setProperty("contentY", first * height);
      ui.settle();
      QStringList names = rowsInTree(ui, "tblItems");
      const qsizetype count = names.size();
      names.removeDuplicates();
      QCOMPARE(names.size(), count);
      const auto begin = names.indexOf(lineName(lines[first].item, 0, 1));
      QVERIFY(begin >= 0);
      // The names of the rows are consecutive, without a row of an earlier place.
      for (qsizetype i = 0; i < count; ++i) {
        QCOMPARE(names[i], lineName(lines[first + i - begin].item, 0, 1));
      }
    }
  }

  void theSavedMessageIsANotification() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    ui.openKeypad();
    ui.confirm("2");
    compare(ui, {{"lblSaved", "notification|Saved 2 × A in box C1, 10:12:05"}});
  }

  void theKeypadIsAccessible() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    ui.openKeypad();
    compare(ui, {{"changeQuantityViewController", "dialog|Quantity|A, Description of A"},
                 {"txtNewQty", "field|Quantity to add"},
                 {"btn0", "button|0"},
                 {"btn9", "button|9"},
                 {"btnNegative", "button|Minus"},
                 {"btnOK", "button|OK"},
                 {"btnCancel", "button|Cancel"},
                 {"lblItemCode", "label|A|Item Code"},
                 {"lblItemBarcode", "label|bA|Barcode"},
                 {"lblItemDescription", "label|Description of A|Description"},
                 {"lblCurrentQty", "label|0|Current"},
                 {"lblTotalQty", "label|0|Total"},
                 {"lblOrderQty", "label|5|Ordered"}});
    checkOutletNames(ui);
  }

  void theOptionsAndTheSummaryAreAccessible() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    ui.touch("btnOptions");
    compare(ui, {{"actionPickerViewController", "dialog|Options"},
                 {"tableViewRow0", "row|View Summary"},
                 {"tableViewRow1", "row|Send Email"},
                 {"tableViewRow2", "row|Complete and Send"}});
    ui.touch("tableViewRow0");
    compare(ui, {{"deliveryDetailsViewController", "pane|Summary"},
                 {"lblDelivery", "label|Summary for Delivery: 4711|Delivery"},
                 {"segmentedControlStatus0", "segment|All"},
                 {"segmentedControlStatus1", "segment|Not picked"},
                 {"segmentedControlStatus2", "segment|Different"},
                 {"segmentedControlStatus3", "segment|Matching"},
                 {"deliveryDetailsViewController/btnClose", "button|Close"},
                 {"txtQtyPicked", "label|0|Picked"},
                 {"txtQtyOrder", "label|5|Ordered"},
                 {"txtQtyDiff", "label|-5|Difference"},
                 {"tblPickingRow0",
                  "row|A, bA, Description of A, picked 0, ordered 5, difference -5"}});
    checkOutletNames(ui);
  }

  void theHistoryIsAccessible() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    ui.openKeypad();
    ui.confirm("5");
    ui.touch("btnPicking");
    ui.touch("btnClose");
    ui.touch("alertButton0");
    ui.touch("btnSegueHistory");
    compare(ui, {{"btnBack", "button|Back"},
                 {"tblHistoryOverviewRow0",
                  "row|Delivery 4711, synchronized No, start 02/03/2026 10:12, end 02/03/2026 "
                  "10:12"}});
    checkOutletNames(ui);
  }

  void anAlertIsAccessible() {
    TestWindow ui;
    ui.enterPicking();
    ui.touch("btnClose");
    compare(ui, {{"alert", "dialog|Close Picking|Are you sure you want to leave picking?"},
                 {"alertMessage", "label|Are you sure you want to leave picking?"},
                 {"alertButton0", "button|OK"},
                 {"alertButton1", "button|Cancel"}});
  }
};

CARTONPICK_WINDOW_TEST(ScreenReaderUiTest);
#include "ScreenReaderUi_test.moc"
