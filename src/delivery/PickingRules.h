#pragma once

#include "base/Int32.h"
#include "delivery/PickRecords.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

/// The rules that a reader would not expect. They are the system's behaviour, to the letter.
namespace PickingRules {

/// How many lines of a box get back, at an import, what was picked of them before. The total of the
/// box counts the lines beyond them as well.
inline constexpr std::size_t kRestoredLines = 4;

/// The box of every loose pick that comes from the catalogue, whichever box is open.
inline const QString kLooseBox = QStringLiteral("1");

/// The row of the pick table on which the keypad opens for a code that is not in the open box: the
/// last of `rows`. What is confirmed there is booked to the line of that row.
constexpr int keypadRowOfLoosePick(int rows) {
  return rows - 1;
}

/// An item line takes the quantity that was booked last for its item in any box, not the sum over
/// the boxes.
inline void setItemQuantity(BoxLine &itemLine, std::int32_t booked) {
  itemLine.pickqty = booked;
}

/// In the history, a later row of an item adds what was picked to what was ordered; the picked
/// quantity stays that of the first row.
inline void addLaterRow(BoxLine &historyLine, std::int32_t pickqty) {
  historyLine.orderqty = wrappingAdd(historyLine.orderqty.value(), pickqty);
}

/// A report is as many bytes long as its text has UTF-16 units: text beyond ASCII makes it lose
/// bytes at its end.
inline QByteArray cutReport(const QByteArray &json) {
  return json.first(QString::fromUtf8(json).size());
}

}  // namespace PickingRules
