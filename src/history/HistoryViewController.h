#pragma once

#include "store/ManagedObjectContext.h"
#include "store/ManagedObjectContextHolder.h"
#include "view/ViewController.h"
#include "view/outlets/TableView.h"

#include <vector>

class deliveryDetailsViewController;

/// The screen with the list of all deliveries that have picks in the store.
class HistoryViewController : public ViewController,
                              public ManagedObjectContextHolder,
                              public TableViewDataSource {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Controllers come from the storyboard")
  OUTLET(TableView, tblHistoryOverview)

 public:
  explicit HistoryViewController(Environment &environment, QObject *parent = nullptr);

  void viewDidLoad() override;
  void prepareForSegue(Segue &segue) override;

  int numberOfRowsInSection(const TableView &table, int section) override;
  QVariant cellForRowAtIndexPath(const TableView &table, int row) override;
  QVariant viewForHeaderInSection(const TableView &table, int section) override;
  double heightForRowAtIndexPath(const TableView &table, int row) override;
  double heightForHeaderInSection(const TableView &table, int section) override;
  void didSelectRowAtIndexPath(TableView &table, int row) override;

  [[nodiscard]] const std::vector<DeliveryPickTimes> &arrayDeliveries() const {
    return m_arrayDeliveries;
  }
  [[nodiscard]] deliveryDetailsViewController *deliveryDetailsVC() const {
    return m_deliveryDetailsVC;
  }

 private:
  /// One entry for each delivery number and value of `sent`, ordered by the last pick time.
  std::vector<DeliveryPickTimes> m_arrayDeliveries;
  deliveryDetailsViewController *m_deliveryDetailsVC = nullptr;
};
