#pragma once

#include "view/outlets/CellLabel.h"

/// The cell of a history row or header.
struct PickHistoryCell {
  Q_GADGET
  Q_PROPERTY(CellLabel deliveryNo MEMBER deliveryNo CONSTANT)
  Q_PROPERTY(CellLabel dateCreated MEMBER dateCreated CONSTANT)
  Q_PROPERTY(CellLabel sent MEMBER sent CONSTANT)
  Q_PROPERTY(CellLabel dateClosed MEMBER dateClosed CONSTANT)
  Q_PROPERTY(QString backgroundColor READ backgroundColorName CONSTANT)

 public:
  /// The height of a row and of the header, in points.
  static constexpr double kHeight = 55.0;

  [[nodiscard]] QString backgroundColorName() const { return colourName(backgroundColor); }

  CellLabel deliveryNo;
  CellLabel dateCreated;
  CellLabel sent;
  CellLabel dateClosed;
  Colour backgroundColor = Colour::clear;
};
