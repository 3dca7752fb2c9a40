#pragma once

#include "view/outlets/CellLabel.h"

struct BoxLine;

/// The cell of a row or header of the pick table and the summary.
struct pickTableCell {
  Q_GADGET
  Q_PROPERTY(CellLabel item MEMBER item CONSTANT)
  Q_PROPERTY(CellLabel barcode MEMBER barcode CONSTANT)
  Q_PROPERTY(CellLabel descr MEMBER descr CONSTANT)
  Q_PROPERTY(CellLabel orderqty MEMBER orderqty CONSTANT)
  Q_PROPERTY(CellLabel pickqty MEMBER pickqty CONSTANT)
  Q_PROPERTY(CellLabel diffqty MEMBER diffqty CONSTANT)
  Q_PROPERTY(QString backgroundColor READ backgroundColorName CONSTANT)

 public:
  /// The height of a row and of the header, in points.
  static constexpr double kHeight = 54.0;

  /// Returns the cell in row `row` for `line`.
  static pickTableCell ofLine(const BoxLine &line, int row);
  /// Returns the header cell with the column titles.
  static pickTableCell header();

  [[nodiscard]] QString backgroundColorName() const { return colourName(backgroundColor); }

  CellLabel item;
  CellLabel barcode;
  CellLabel descr;
  CellLabel orderqty;
  CellLabel pickqty;
  CellLabel diffqty;
  Colour backgroundColor = Colour::clear;
};
