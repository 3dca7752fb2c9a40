#pragma once

#include "view/Colour.h"

#include <QObject>

/// A label of a table cell. Cells are values, made anew whenever a visible row needs one.
struct CellLabel {
  Q_GADGET
  Q_PROPERTY(QString text MEMBER text CONSTANT)
  Q_PROPERTY(QString textColor READ textColorName CONSTANT)

 public:
  [[nodiscard]] QString textColorName() const { return colourName(textColor); }

  QString text = {};
  Colour textColor = Colour::black;
};
