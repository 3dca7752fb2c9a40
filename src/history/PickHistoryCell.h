#pragma once

#include "view/outlets/CellLabel.h"

/// A row of the history, and the header above its rows.
struct PickHistoryCell {
  Q_GADGET
  Q_PROPERTY(CellLabel deliveryNo MEMBER deliveryNo CONSTANT)
  Q_PROPERTY(CellLabel dateCreated MEMBER dateCreated CONSTANT)
  Q_PROPERTY(CellLabel sent MEMBER sent CONSTANT)
  Q_PROPERTY(CellLabel dateClosed MEMBER dateClosed CONSTANT)
  Q_PROPERTY(QString backgroundColor READ backgroundColorName CONSTANT)

 public:
  /// The height of rows and header, in points.
  static constexpr double kHeight = 55.0;

  [[nodiscard]] QString backgroundColorName() const { return colourName(backgroundColor); }

  CellLabel deliveryNo;
  CellLabel dateCreated;
  CellLabel sent;
  CellLabel dateClosed;
  Colour backgroundColor = Colour::clear;
};
