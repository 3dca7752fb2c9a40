#pragma once

#include "view/Colour.h"

#include <QObject>

/// A label of a table cell. A cell is a value, created again whenever a visible row needs it.
struct CellLabel {
  Q_GADGET
  Q_PROPERTY(QString text MEMBER text CONSTANT)
  Q_PROPERTY(QString textColor READ textColorName CONSTANT)

 public:
  [[nodiscard]] QString textColorName() const { return colourName(textColor); }

  QString text = {};
  Colour textColor = Colour::black;
};
