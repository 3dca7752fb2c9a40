#pragma once

#include "delivery/Quantity.h"

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <memory>
#include <variant>
#include <vector>

/// One line of a box, or one item of a delivery merged over its boxes.
struct BoxLine {
  QString barcode = {};
  /// A placeholder that means "not picked yet" in lines that come from the service.
  QString datepicked = QStringLiteral("01/01/2001");
  QString descr = {};
  QString doc = {};
  QString item = {};
  QString ordernum = {};
  Quantity orderqty = {};
  Quantity pickqty = {};
};

/// One carton of a delivery with its lines, in the order in which they were delivered.
struct BoxRecord {
  QString box = {};
  std::int32_t boxorderqty = 0;
  std::int32_t boxpickqty = 0;
  std::vector<BoxLine> boxitems = {};
};

/// A code that was scanned although it is no line of the open box. Lives in memory alone.
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

/// What the entries of a working list answer for a key. A key that an entry lacks reads as 0, as no
/// lines, or as a null string.
const QString &boxOf(const PickEntry &entry);
std::int32_t boxorderqtyOf(const PickEntry &entry);
std::int32_t boxpickqtyOf(const PickEntry &entry);
const std::vector<BoxLine> &boxitemsOf(const PickEntry &entry);
QString ordernumOf(const PickEntry &entry);

/// The delivery number of a working list: that of the first line of its first box; a null string if
/// there is no such line.
QString deliveryNumberOf(const PickList &list);
