#pragma once

#include "delivery/PickRecords.h"
#include "view/outlets/CellLabel.h"

/// A row of the box list.
struct boxTableViewCell {
  Q_GADGET
  Q_PROPERTY(CellLabel lblBox MEMBER lblBox CONSTANT)
  Q_PROPERTY(CellLabel lblPickQty MEMBER lblPickQty CONSTANT)
  Q_PROPERTY(CellLabel lblOrderQty MEMBER lblOrderQty CONSTANT)
  Q_PROPERTY(QString backgroundColor READ backgroundColorName CONSTANT)
  Q_PROPERTY(QString state MEMBER state CONSTANT)

 public:
  /// The cell of `entry` of a working list in row `row`.
  static boxTableViewCell ofEntry(const PickEntry &entry, int row);

  [[nodiscard]] QString backgroundColorName() const { return colourName(backgroundColor); }

  CellLabel lblBox;
  CellLabel lblPickQty;
  CellLabel lblOrderQty;
  Colour backgroundColor = Colour::clear;
  /// The word for what the colour says: "unopened", "completed" or "incomplete".
  QString state;
};
