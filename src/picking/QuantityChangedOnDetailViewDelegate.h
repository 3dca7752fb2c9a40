#pragma once

#include "delivery/PickRecords.h"

#include <QString>

#include <memory>

/// Receives messages from the detail pane.
class QuantityChangedOnDetailViewDelegate {
 public:
  virtual ~QuantityChangedOnDetailViewDelegate() = default;
  /// A confirmed quantity has been booked and saved.
  virtual void QuantityChangedOnDetailView() = 0;
  /// Makes `list` the working list; `box` is ignored. The detail pane never calls it.
  virtual void QuantityChangedOnDetailViewDelegateForPick(std::shared_ptr<PickList> list,
                                                          const QString &box) = 0;
};
