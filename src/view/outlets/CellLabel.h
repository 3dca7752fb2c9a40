#pragma once

#include "device/OneLine.h"
#include "view/Colour.h"

#include <QObject>

/// A label of a table cell. A cell is a value, created again whenever a visible row needs it. The
/// row shows a line break or another control character as a blank.
struct CellLabel {
  Q_GADGET
  Q_PROPERTY(QString text READ line CONSTANT)
  Q_PROPERTY(QString textColor READ textColorName CONSTANT)

 public:
  /// The text as the row shows it.
  [[nodiscard]] QString line() const { return inOneLine(text, u' '); }
  [[nodiscard]] QString textColorName() const { return colourName(textColor); }

  QString text = {};
  Colour textColor = Colour::black;
};
