#pragma once

#include "delivery/Quantity.h"

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <variant>
#include <vector>

/// A line of a box, or an item of a delivery merged over its boxes.
struct BoxLine {
  QString barcode = {};
  /// A fixed placeholder for "not picked yet".
  QString datepicked = QStringLiteral("01/01/2001");
  QString descr = {};
  QString doc = {};
  QString item = {};
  QString ordernum = {};
  Quantity orderqty = {};
  Quantity pickqty = {};
};

/// A carton of a delivery with its lines, in the order of the service's answer.
struct BoxRecord {
  QString box = {};
  std::int32_t boxorderqty = 0;
  std::int32_t boxpickqty = 0;
  std::vector<BoxLine> boxitems = {};
};

/// A pick of a scanned code that is not a line of the open box.
struct LoosePick {
  QString barcode = {};
  QString box = {};
  QDateTime datepicked = {};
  QString descr = {};
  QString doc = {};
  QString item = {};
  QString ordernum = {};
  std::int32_t qty = 0;
  std::int32_t sent = 0;
};

using PickEntry = std::variant<BoxRecord, LoosePick>;

/// The working list of a delivery: its boxes, followed by the loose picks.
using PickList = std::vector<PickEntry>;
/// The lines of a delivery merged by item code.
using ItemLines = std::vector<BoxLine>;

/// The fields of an entry of a working list. A field that the entry's type lacks reads as 0, an
/// empty list or a null string.
const QString &boxOf(const PickEntry &entry);
std::int32_t boxorderqtyOf(const PickEntry &entry);
std::int32_t boxpickqtyOf(const PickEntry &entry);
const std::vector<BoxLine> &boxitemsOf(const PickEntry &entry);
QString ordernumOf(const PickEntry &entry);

/// Returns the delivery number of a working list, taken from the first line of its first entry; a
/// null string if there is no such line.
QString deliveryNumberOf(const PickList &list);
