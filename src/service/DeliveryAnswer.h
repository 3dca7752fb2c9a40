#pragma once

#include "delivery/Quantity.h"

#include <QByteArray>
#include <QString>

#include <optional>
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

/// The answer to a delivery lookup. The texts of the header are those of its first element.
struct DeliveryAnswer {
  QString cusname;
  QString brand;
  /// "MM/dd/yyyy", both of them.
  QString cdate;
  QString date;
  std::vector<OrderLine> lines;
};

/// What stays of the last answer of the service, whichever call it belonged to.
struct JsonResult {
  /// "doc" of element 0; a null string if there is none.
  QString doc;
};

/// What stays of `answer`, if it could be read at all.
std::optional<JsonResult> jsonResultOf(const std::optional<DeliveryAnswer> &answer);

/// Reads the body of an answer to a lookup: a JSON array of objects. A missing or null text reads
/// as empty, a missing quantity as 0, a number where a text is expected as its text and a text
/// where a number is expected as its number. Nothing if the body is not UTF-8, not JSON, or JSON of
/// another shape.
std::optional<DeliveryAnswer> parseDeliveryAnswer(const QByteArray &body);
