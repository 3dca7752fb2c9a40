#pragma once

#include "view/outlets/CellLabel.h"

/// The cell of a scan trail row.
struct ScanTrailCell {
  Q_GADGET
  Q_PROPERTY(CellLabel time MEMBER time CONSTANT)
  Q_PROPERTY(CellLabel code MEMBER code CONSTANT)
  Q_PROPERTY(CellLabel outcome MEMBER outcome CONSTANT)
  Q_PROPERTY(QString icon MEMBER icon CONSTANT)

 public:
  CellLabel time;
  CellLabel code;
  CellLabel outcome;
  /// The name of the icon for the outcome.
  QString icon;
};
