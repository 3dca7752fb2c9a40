#pragma once

#include "delivery/PickRecords.h"

class Label;

/// Shows the open box in the labels of the detail pane.
struct OpenBoxLabels {
  Label &name;
  Label &picked;
  Label &ordered;
  Label &difference;
  Label &scanState;

  /// Shows the name of `entry` and that scans are accepted; without an open entry, nullptr, that a
  /// box has to be opened.
  void showBox(const PickEntry *entry) const;
  /// Shows the ordered quantity of `entry`. Does nothing if it is nullptr.
  void showOrdered(const PickEntry *entry) const;
  /// Shows the picked quantity of `entry` and its difference to the ordered quantity. Does nothing
  /// if it is nullptr.
  void showPicked(const PickEntry *entry) const;
  void clearTotals() const;
};
