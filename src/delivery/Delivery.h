#pragma once

#include "delivery/Quantity.h"

#include <QString>

#include <vector>

/// An order line of a carton, as received from the service.
struct OrderLine {
  QString doc;
  QString ordernum;
  QString item;
  QString barcode;
  QString descr;
  QString carton;
  Quantity qty;
};

/// A delivery, as received from the service. The header fields come from the first element of the
/// answer.
struct Delivery {
  QString cusname;
  QString brand;
  /// The creation date, "MM/dd/yyyy".
  QString cdate;
  /// The shipping date, "MM/dd/yyyy".
  QString date;
  std::vector<OrderLine> lines;
};
