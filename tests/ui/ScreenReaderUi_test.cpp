#include "support/TestWindow.h"

#include <QAccessible>
#include <QQuickItem>
#include <QTest>

#include <algorithm>
#include <utility>

namespace {

/// What a screen reader hears of `name`: "role|name|description", the last one if there is one.
QString heard(const TestWindow &ui, const QString &name) {
  QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(ui.item(name));
  if (interface == nullptr) {
    return {};
  }
  const QHash<QAccessible::Role, QString> roles{
      {QAccessible::Button, "button"},       {QAccessible::EditableText, "field"},
      {QAccessible::RadioButton, "segment"}, {QAccessible::ListItem, "row"},
      {QAccessible::StaticText, "label"},    {QAccessible::Dialog, "dialog"},
      {QAccessible::Heading, "heading"}};
  QStringList parts{roles.value(interface->role()), interface->text(QAccessible::Name)};
  const QString description = interface->text(QAccessible::Description);
  return (description.isEmpty() ? parts : parts << description).join(u'|');
}

using Expected = QList<std::pair<const char *, const char *>>;

void compare(const TestWindow &ui, const Expected &expected) {
  for (const auto &[name, text] : expected) {
    QTRY_COMPARE(heard(ui, name), text);
  }
}

/// Whether `item` or an item in it has the name `name`.
bool carriesName(const TestWindow &ui, QQuickItem *item, const QString &name) {
  const QList<QQuickItem *> items = ui.visibleItems(item);
  return std::any_of(items.begin(), items.end(),
                     [&](const QQuickItem *inner) { return inner->objectName() == name; });
}

void everyOutletIsFoundByName(const TestWindow &ui) {
  for (QQuickItem *item : ui.visibleItems()) {
    const auto *outlet = item->property("outlet").value<QObject *>();
    if (outlet != nullptr) {
      QVERIFY2(carriesName(ui, item, outlet->objectName()), qPrintable(outlet->objectName()));
    }
  }
}

}  // namespace

/// What a screen reader, or an automated hand, finds.
class ScreenReaderUiTest : public QObject {
  Q_OBJECT

 private slots:
  void theStartScreen() {
    TestWindow ui;
    compare(ui, {{"btnSegueToSplitView", "button|Picking"}, {"btnSegueHistory", "button|History"}});
    everyOutletIsFoundByName(ui);
  }

  void theMasterPane() {
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
                 {"tblBoxesRow0", "row|Box C1, picked 0, ordered 5, unopened"}});
    QCOMPARE(ui.texts({"lblBoxesTotalLabel", "lblBoxesUnopenedLabel", "lblBoxesCompletedLabel",
                       "lblBoxesIncompleteLabel"}),
             QStringList({"Boxes", "Unopened", "Completed", "Incomplete"}));
    everyOutletIsFoundByName(ui);
  }

  void theDetailPane() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    compare(ui,
            {{"txtBarcode", "field|Item or barcode"},
             {"segmentedControl0", "button|All"},
             {"segmentedControl1", "button|Not picked"},
             {"segmentedControl2", "button|Different"},
             {"segmentedControl3", "button|Matching"},
             {"btnOptions", "button|Options"},
             {"lblTotalPick", "label|0|Picked"},
             {"lblTotalOrder", "label|5|Ordered"},
             {"lblTotalDiff", "label|-5|Difference"},
             {"tblItemsRow0", "row|A, bA, Description of A, picked 0, ordered 5, difference -5"}});
  }

  void theChosenSegmentIsChecked() {
    TestWindow ui;
    ui.enterPicking();
    ui.touch("segmentedControl2");
    for (int segment = 0; segment < 4; ++segment) {
      QQuickItem *item = ui.item(QStringLiteral("segmentedControl%1").arg(segment));
      QTRY_COMPARE(bool(QAccessible::queryAccessibleInterface(item)->state().checked),
                   segment == 2);
    }
  }

  void theKeypad() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    ui.openKeypad();
    compare(ui, {{"txtNewQty", "field|Quantity to add"},
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
    everyOutletIsFoundByName(ui);
  }

  void theOptionsAndTheSummary() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    ui.touch("btnOptions");
    compare(ui, {{"tableViewRow0", "row|View Summary"},
                 {"tableViewRow1", "row|Send Email"},
                 {"tableViewRow2", "row|Complete and Send"}});
    ui.touch("tableViewRow0");
    compare(ui, {{"segmentedControlStatus0", "button|All"},
                 {"segmentedControlStatus1", "button|Not picked"},
                 {"segmentedControlStatus2", "button|Different"},
                 {"segmentedControlStatus3", "button|Matching"},
                 {"deliveryDetailsViewController/btnClose", "button|Close"},
                 {"txtQtyPicked", "label|0|Picked"},
                 {"txtQtyOrder", "label|5|Ordered"},
                 {"txtQtyDiff", "label|-5|Difference"},
                 {"tblPickingRow0",
                  "row|A, bA, Description of A, picked 0, ordered 5, difference -5"}});
    everyOutletIsFoundByName(ui);
  }

  void theHistory() {
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
    everyOutletIsFoundByName(ui);
  }

  void anAlert() {
    TestWindow ui;
    ui.enterPicking();
    ui.touch("btnClose");
    compare(ui, {{"alert", "dialog|Close Picking"},
                 {"alertMessage", "label|Are you sure you want to leave picking?"},
                 {"alertButton0", "button|OK"},
                 {"alertButton1", "button|Cancel"}});
  }
};

QTEST_MAIN(ScreenReaderUiTest)
#include "ScreenReaderUi_test.moc"
