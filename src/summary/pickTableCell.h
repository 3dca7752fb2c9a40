#pragma once

#include "view/outlets/CellLabel.h"

#include <cstdint>

struct BoxLine;

/// A row of the pick table and of the summary, and the header above either.
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
  /// The height of rows and header, in points.
  static constexpr double kHeight = 54.0;

  /// The cell of `line` in row `row` of the shown list.
  static pickTableCell ofLine(const BoxLine &line, int row);
  /// The column titles.
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
