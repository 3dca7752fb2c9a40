#pragma once

#include "base/WeakDelegate.h"
#include "delivery/PickingSession.h"
#include "picking/ActionPickerDelegate.h"
#include "picking/ChangeQuantityDelegate.h"
#include "picking/OpenBoxLabels.h"
#include "picking/QuantityChangedOnDetailViewDelegate.h"
#include "picking/ScanTrail.h"
#include "store/ManagedObjectContextHolder.h"
#include "summary/pickTableCell.h"
#include "view/AlertStack.h"
#include "view/ViewController.h"
#include "view/outlets/Button.h"
#include "view/outlets/Label.h"
#include "view/outlets/SegmentedControl.h"
#include "view/outlets/TableView.h"
#include "view/outlets/TextField.h"

#include <memory>
#include <optional>
#include <vector>

class PickingSender;
class ScanTrailViewController;
class actionPickerViewController;
class deliveryDetailsViewController;

/// The right pane of the picking screen: takes scans for the open box, shows its lines, opens the
/// keypad and books the confirmed quantity.
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
  /// `session` must outlive the pane.
  detailViewController(PickingSession &session, Environment &environment,
                       QObject *parent = nullptr);
  ~detailViewController() override;

  void setManagedObjectContext(ManagedObjectContext *context) override {
    ManagedObjectContextHolder::setManagedObjectContext(context);
    m_session.setManagedObjectContext(context);
  }
  void viewDidLoad() override;

  // The session's data.
  [[nodiscard]] QString doc() const { return m_session.doc(); }
  [[nodiscard]] int curBoxIndex() const { return m_session.curBoxIndex(); }
  [[nodiscard]] const std::shared_ptr<PickList> &arrayPick() const { return m_session.arrayPick(); }
  [[nodiscard]] const std::shared_ptr<ItemLines> &arrayItems() const {
    return m_session.arrayItems();
  }
  void setDelegate(WeakDelegate<QuantityChangedOnDetailViewDelegate> delegate) {
    m_delegate = delegate;
  }

  // Scanning.
  bool textFieldShouldReturn(TextField &field) override;
  [[nodiscard]] TextField *scanField() const override;
  void noteRefusedScan(const QString &code) override { noteScan(code, ScanOutcome::Refused); }
  /// Shows the scan trail.
  Q_INVOKABLE void scanStateTouched();
  [[nodiscard]] ScanTrail &scanTrail() { return m_scans; }

  // The pick table.
  void segmentedControlValueChanged() { tblItems->reloadData(); }
  int numberOfRowsInSection(const TableView &table, int section) override;
  QVariant cellForRowAtIndexPath(const TableView &table, int row) override;
  QVariant viewForHeaderInSection(const TableView &table, int section) override;
  double heightForRowAtIndexPath(const TableView & /*table*/, int /*row*/) override {
    return pickTableCell::kHeight;
  }
  double heightForHeaderInSection(const TableView & /*table*/, int /*section*/) override {
    return pickTableCell::kHeight;
  }
  void didSelectRowAtIndexPath(TableView & /*table*/, int row) override {
    displayQuantityViewControllerForIndexPath(row);
  }

  // The quantity.
  /// Opens the keypad for `row` of the pick table. If there is no such row, only plays the error
  /// tone.
  void displayQuantityViewControllerForIndexPath(int row);
  void CloseViewControllerWithGetQtyAtRow(std::int32_t row, std::int32_t currentQty,
                                          std::int32_t addQty) override;

  // The actions.
  Q_INVOKABLE void btnOptionsTouched();
  void selectedAction(const QString &title) override;
  void clickedButtonAtIndex(const AlertView &alert, int buttonIndex) override;
  void showDeliveryDetailsViewController();
  void sendPickingToServer();

  [[nodiscard]] actionPickerViewController *actionPicker() const { return m_actionPicker; }
  [[nodiscard]] deliveryDetailsViewController *deliveryDetailsVC() const {
    return m_deliveryDetailsVC;
  }

  // The rest of the pane's interface. The program itself does not call these functions.

  [[nodiscard]] bool scanStarted() const { return false; }
  void stepperValueChanged() {}
  /// Writes line `row` of the open box to the store.
  void saveArrayRow(int row) { m_session.recordLine(static_cast<std::size_t>(row)); }
  /// Writes the whole working list to the store.
  void ChangePickingRowInManagedContext() { m_session.recordWorkingList(); }

 private:
  void pickingStarted();
  void pickingStopped();
  void boxOpened();
  void loosePickBooked(int position);
  void showSaved(const BoxLine &line, const QString &box);
  void showNotSaved(const BoxLine &line, const QString &box, const QString &reason);
  void setScanningEnabled(bool isEnabled);

  /// The position in the open box of the line that `row` of the pick table shows.
  [[nodiscard]] std::size_t linePosition(int row) const;
  [[nodiscard]] bool isFiltered() const;
  void openKeypadForLoosePick(const LoosePick &loose);
  void openKeypadForForeignLine(const BoxLine &line);
  /// Opens the keypad for `line`, which is or will be in `row` of the pick table.
  void openKeypad(const BoxLine &line, int row);
  void noteScan(const QString &code, ScanOutcome outcome, int line = 0);
  void refuseUnknownItem(const QString &code);
  void markRow(int row);
  /// Shows the open box and whether scans are accepted.
  void showOpenBox();

  PickingSession &m_session;
  OpenBoxLabels m_openBox{*lblOpenBox, *lblTotalPick, *lblTotalOrder, *lblTotalDiff, *lblScanState};
  ScanTrail m_scans;
  /// The positions in the open box of the lines that the filter shows; empty if no filter is set.
  std::vector<std::size_t> m_arrayDisplay;
  WeakDelegate<QuantityChangedOnDetailViewDelegate> m_delegate;
  actionPickerViewController *m_actionPicker = nullptr;
  ScanTrailViewController *m_scanTrail = nullptr;
  /// True if the keypad was opened by a scan and no quantity has been confirmed since.
  bool m_isKeypadForScan = false;
  /// The line that the keypad is open for, if it is not in the open box yet.
  std::optional<BoxLine> m_foreignLine;
  deliveryDetailsViewController *m_deliveryDetailsVC = nullptr;
  std::unique_ptr<PickingSender> m_sender;
};
