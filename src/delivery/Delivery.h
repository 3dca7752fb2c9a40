#pragma once

#include "delivery/Quantity.h"

#include <QString>

#include <vector>

/// One order line of one carton, as the service delivers it.
struct OrderLine {
  QString doc;
  QString ordernum;
  QString item;
  QString barcode;
  QString descr;
  QString carton;
  Quantity qty;
};

/// A delivery, as the service delivers it. The texts of its header are those of the first element
/// of the answer.
struct Delivery {
  QString cusname;
  QString brand;
  /// "MM/dd/yyyy", both of them.
  QString cdate;
  QString date;
  std::vector<OrderLine> lines;
};
