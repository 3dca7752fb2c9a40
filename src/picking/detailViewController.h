#pragma once

#include "base/WeakDelegate.h"
#include "delivery/CodePositions.h"
#include "delivery/PickRecords.h"
#include "picking/ActionPickerDelegate.h"
#include "picking/ChangeQuantityDelegate.h"
#include "picking/QuantityChangedOnDetailViewDelegate.h"
#include "store/ManagedObjectContextHolder.h"
#include "view/AlertStack.h"
#include "view/ScanTrail.h"
#include "view/ViewController.h"
#include "view/outlets/Button.h"
#include "view/outlets/Label.h"
#include "view/outlets/SegmentedControl.h"
#include "view/outlets/TableView.h"
#include "view/outlets/TextField.h"

#include <QMultiHash>

#include <memory>
#include <optional>
#include <vector>

class PickingSender;
class ScanTrailViewController;
class actionPickerViewController;
class deliveryDetailsViewController;

/// The right pane of the picking screen: owns the delivery's working lists, takes scans for the
/// open box, shows its lines, applies confirmed quantities.
class detailViewController : public ViewController,
                             public ManagedObjectContextHolder,
                             public TextFieldDelegate,
                             public AlertViewDelegate,
                             public TableViewDataSource,
                             public ActionPickerDelegate,
                             public ChangeQuantityDelegate {
  Q_OBJECT
  QML_NAMED_ELEMENT(DetailViewController)
  QML_UNCREATABLE("Controllers come from the storyboard")
  OUTLET(TextField, txtBarcode)
  OUTLET(TextField, txtQuantity)
  OUTLET(SegmentedControl, segmAskForQty)
  OUTLET(SegmentedControl, segmentedControl)
  OUTLET(TableView, tblItems)
  OUTLET(Button, btnOptions)
  OUTLET(Label, lblOpenBox)
  OUTLET(Label, lblTotalPick)
  OUTLET(Label, lblTotalOrder)
  OUTLET(Label, lblTotalDiff)
  OUTLET(Label, lblScanState)
  OUTLET(Label, lblSaved)

 public:
  explicit detailViewController(Environment &environment, QObject *parent = nullptr);
  ~detailViewController() override;

  void viewDidLoad() override;

  // What the master pane sets and reads.
  [[nodiscard]] QString doc() const { return m_doc; }
  void setDoc(const QString &doc) { m_doc = doc; }
  /// The open box's place in the working list; -1 while no box is open.
  [[nodiscard]] int curBoxIndex() const { return m_curBoxIndex; }
  void setCurBoxIndex(int index);
  [[nodiscard]] const std::shared_ptr<PickList> &arrayPick() const { return m_arrayPick; }
  void setArrayPick(std::shared_ptr<PickList> list);
  [[nodiscard]] const std::shared_ptr<ItemLines> &arrayItems() const { return m_arrayItems; }
  /// No line is added to `items`, or gets another item code, from now on.
  void setArrayItems(std::shared_ptr<ItemLines> items);
  void setDelegate(WeakDelegate<QuantityChangedOnDetailViewDelegate> delegate) {
    m_delegate = delegate;
  }
  /// The working list, which reads as empty while there is none.
  [[nodiscard]] const PickList &pickList() const;
  [[nodiscard]] bool scanStarted() const { return m_scanStarted; }
  void enableScanning();
  void disableScanning();
  void clearTotals();

  // Scanning.
  bool textFieldShouldReturn(TextField &field) override;
  [[nodiscard]] TextField *scanField() const override;
  /// Shows what became of the last scans.
  Q_INVOKABLE void scanStateTouched();

  // The pick table.
  void segmentedControlValueChanged() { tblItems->reloadData(); }
  int numberOfRowsInSection(const TableView &table, int section) override;
  QVariant cellForRowAtIndexPath(const TableView &table, int row) override;
  QVariant viewForHeaderInSection(const TableView &table, int section) override;
  double heightForRowAtIndexPath(const TableView &table, int row) override;
  double heightForHeaderInSection(const TableView &table, int section) override;
  void didSelectRowAtIndexPath(TableView &table, int row) override;

  // The quantity.
  /// Opens the keypad for `row` of the pick table. Where there is no such row, nothing opens and
  /// the error tone sounds.
  void displayQuantityViewControllerForIndexPath(int row);
  void CloseViewControllerWithGetQtyAtRow(std::int32_t row, std::int32_t currentQty,
                                          std::int32_t addQty) override;
  void stepperValueChanged() {}
  /// Writes line `row` of the open box to the store.
  void saveArrayRow(int row);
  /// Writes the whole working list to the store. Never sent.
  void ChangePickingRowInManagedContext();

  // What can be done with the picking.
  Q_INVOKABLE void btnOptionsTouched();
  void selectedAction(const QString &title) override;
  void clickedButtonAtIndex(const AlertView &alert, int buttonIndex) override;
  void showDeliveryDetailsViewController();
  void sendPickingToServer();

  [[nodiscard]] actionPickerViewController *actionPicker() const { return m_actionPicker; }
  [[nodiscard]] deliveryDetailsViewController *deliveryDetailsVC() const {
    return m_deliveryDetailsVC;
  }

 private:
  [[nodiscard]] const std::vector<BoxLine> &openBoxLines() const;
  [[nodiscard]] std::optional<std::size_t> openBoxLineWithCode(const QString &code);
  /// The line that `row` of the pick table shows, as a position in the open box's lines.
  [[nodiscard]] std::size_t linePosition(int row) const;
  void openKeypadOnLastRow(LoosePick loose);
  void noteScan(const QString &code, ScanOutcome outcome, int line = 0);
  void refuseUnknownItem(const QString &code);
  void markRow(int row);
  void setItemLines(const QString &item, std::int32_t pickqty);
  void moveBoxTotal(std::int32_t added);
  /// Says which box is open and whether a scan will be taken.
  void showOpenBox();
  void showSaved(const BoxLine &line);

  QString m_doc;
  int m_curBoxIndex = -1;
  std::shared_ptr<PickList> m_arrayPick;
  std::shared_ptr<ItemLines> m_arrayItems;
  /// Where the lines of each item code stand in `m_arrayItems`.
  QMultiHash<QString, std::size_t> m_itemPositions;
  /// The codes of the open box; nothing before its first scan.
  std::optional<CodePositions> m_openBoxCodes;
  /// The positions in the open box's lines of those that the filter shows; empty without a filter.
  std::vector<std::size_t> m_arrayDisplay;
  bool m_scanStarted = false;
  WeakDelegate<QuantityChangedOnDetailViewDelegate> m_delegate;
  actionPickerViewController *m_actionPicker = nullptr;
  ScanTrailViewController *m_scanTrail = nullptr;
  /// Whether the keypad is open, or was closed without a quantity, for a line that a scan found.
  bool m_isKeypadForScan = false;
  deliveryDetailsViewController *m_deliveryDetailsVC = nullptr;
  std::unique_ptr<PickingSender> m_sender;
};
