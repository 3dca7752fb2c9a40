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

  /// Shows the name of the open `entry`, which is nullptr if no box is open, and whether the pane
  /// takes scans: not without an open box, nor while another screen covers the pane.
  void showBox(const PickEntry *entry, bool isPaneCovered) const;
  /// Shows the ordered quantity of `entry`. Does nothing if it is nullptr.
  void showOrdered(const PickEntry *entry) const;
  /// Shows the picked quantity of `entry` and its difference to the ordered quantity. Does nothing
  /// if it is nullptr.
  void showPicked(const PickEntry *entry) const;
  void clearTotals() const;
};
