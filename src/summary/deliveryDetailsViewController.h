#pragma once

#include "delivery/PickRecords.h"
#include "view/ViewController.h"
#include "view/outlets/Label.h"
#include "view/outlets/SegmentedControl.h"
#include "view/outlets/TableView.h"

#include <memory>
#include <vector>

/// The summary of a delivery: its item lines with a filter, and its totals. It overlays the screen
/// that opens it and is read-only.
class deliveryDetailsViewController : public ViewController, public TableViewDataSource {
  Q_OBJECT
  QML_NAMED_ELEMENT(DeliveryDetailsViewController)
  QML_UNCREATABLE("Controllers come from the storyboard")
  OUTLET(Label, lblDelivery)
  OUTLET(TableView, tblPicking)
  OUTLET(SegmentedControl, segmentedControlStatus)
  OUTLET(Label, txtQtyPicked)
  OUTLET(Label, txtQtyOrder)
  OUTLET(Label, txtQtyDiff)

 public:
  explicit deliveryDetailsViewController(Environment &environment, QObject *parent = nullptr);

  [[nodiscard]] const std::shared_ptr<const ItemLines> &arrayItems() const { return m_arrayItems; }
  /// Sets the lines of the summary; they are shown on the next `viewWillAppear`.
  void setArrayItems(std::shared_ptr<const ItemLines> items) { m_arrayItems = std::move(items); }

  void viewDidLoad() override;
  void viewWillAppear() override;
  void segmentedControlStatusValueChanged();
  Q_INVOKABLE void btnCloseTouched();

  int numberOfRowsInSection(const TableView &table, int section) override;
  QVariant cellForRowAtIndexPath(const TableView &table, int row) override;
  QVariant viewForHeaderInSection(const TableView &table, int section) override;
  double heightForRowAtIndexPath(const TableView &table, int row) override;
  double heightForHeaderInSection(const TableView &table, int section) override;
  void didSelectRowAtIndexPath(TableView &table, int row) override;
  void CloseViewControllerWithGetQtyAtRow(std::int32_t /*row*/, std::int32_t /*currentQty*/,
                                          std::int32_t /*addQty*/) {}

 private:
  void showTotals();

  std::shared_ptr<const ItemLines> m_arrayItems = std::make_shared<const ItemLines>();
  /// The positions in `m_arrayItems` of the lines that the filter shows.
  std::vector<std::size_t> m_displayItems;
};
