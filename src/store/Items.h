#pragma once

#include <QString>

/// One article of the catalogue. A text that the row lacks is a null string.
struct Items {
  QString barcode;
  QString item;
  QString descr;
};
