#pragma once

#include <QString>

/// One article of the catalogue, as stored. A NULL column is a null string.
struct Items {
  QString barcode;
  QString item;
  QString descr;
};
