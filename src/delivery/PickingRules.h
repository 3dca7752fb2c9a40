#pragma once

#include "base/Int32.h"
#include "delivery/PickRecords.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

/// The rules that a reader would not expect. Each one is intended behaviour.
namespace PickingRules {

/// An import restores the earlier picked quantities of only this many lines of a box, starting with
/// its first. The box total includes the picks of all lines.
inline constexpr std::size_t kRestoredLines = 4;

/// The box of every loose pick from the catalogue, regardless of the open box.
inline const QString kLooseBox = QStringLiteral("1");

/// The row of the pick table for which the keypad opens when a code is not in the open box: the
/// last of `rows` rows. A confirmed quantity is booked to the line of that row.
constexpr int keypadRowOfLoosePick(int rows) {
  return rows - 1;
}

/// The picked quantity of an item line is the one last booked for the item in any box, not the sum
/// over all boxes.
inline void setItemQuantity(BoxLine &itemLine, std::int32_t booked) {
  itemLine.pickqty = booked;
}

/// In the history, each later row of an item adds its picked quantity to the line's ordered
/// quantity; the line's picked quantity stays that of the first row.
inline void addLaterRow(BoxLine &historyLine, std::int32_t pickqty) {
  historyLine.orderqty = wrappingAdd(historyLine.orderqty.value(), pickqty);
}

/// A report is cut to as many bytes as its text has UTF-16 code units, so a report with non-ASCII
/// text loses bytes at its end.
inline QByteArray cutReport(const QByteArray &json) {
  return json.first(QString::fromUtf8(json).size());
}

}  // namespace PickingRules
