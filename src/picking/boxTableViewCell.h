#pragma once

#include "delivery/PickRecords.h"
#include "view/outlets/CellLabel.h"

/// The cell of a box list row.
struct boxTableViewCell {
  Q_GADGET
  Q_PROPERTY(CellLabel lblBox MEMBER lblBox CONSTANT)
  Q_PROPERTY(CellLabel lblPickQty MEMBER lblPickQty CONSTANT)
  Q_PROPERTY(CellLabel lblOrderQty MEMBER lblOrderQty CONSTANT)
  Q_PROPERTY(QString backgroundColor READ backgroundColorName CONSTANT)
  Q_PROPERTY(QString state MEMBER state CONSTANT)

 public:
  /// Returns the cell in row `row` for an entry of the working list.
  static boxTableViewCell ofEntry(const PickEntry &entry, int row);

  [[nodiscard]] QString backgroundColorName() const { return colourName(backgroundColor); }

  CellLabel lblBox;
  CellLabel lblPickQty;
  CellLabel lblOrderQty;
  Colour backgroundColor = Colour::clear;
  /// The state of the box in words: "unopened", "completed" or "incomplete".
  QString state;
};
