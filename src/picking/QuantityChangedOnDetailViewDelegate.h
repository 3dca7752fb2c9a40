#pragma once

#include "delivery/PickRecords.h"

#include <QString>

#include <memory>

/// What the detail pane tells, and asks of, the pane beside it.
class QuantityChangedOnDetailViewDelegate {
 public:
  virtual ~QuantityChangedOnDetailViewDelegate() = default;
  /// A confirmed quantity has been applied and recorded.
  virtual void QuantityChangedOnDetailView() = 0;
  /// Makes `list` the detail pane's working list; `box` is not used. Never sent.
  virtual void QuantityChangedOnDetailViewDelegateForPick(std::shared_ptr<PickList> list,
                                                          const QString &box) = 0;
};
