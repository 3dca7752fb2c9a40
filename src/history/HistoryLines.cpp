#include "history/HistoryLines.h"

#include "base/Int32.h"

#include <QHash>

namespace {

void addLaterRow(const Picking &row, BoxLine &line, const PickingRules &rules) {
  if (rules.sumsItemsOverBoxes) {
    line.pickqty = wrappingAdd(line.pickqty.value(), row.pickqty);
    line.orderqty = wrappingAdd(line.orderqty.value(), row.orderqty);
  } else {
    line.orderqty = wrappingAdd(line.orderqty.value(), row.pickqty);
  }
}

}  // namespace

ItemLines historyLines(const std::vector<Picking> &rows, const PickingRules &rules) {
  ItemLines lines;
  QHash<QString, std::size_t> positions;
  for (const Picking &row : rows) {
    const auto known = positions.constFind(row.item);
    if (known != positions.cend()) {
      addLaterRow(row, lines[*known], rules);
      continue;
    }
    positions.insert(row.item, lines.size());
    lines.push_back({.barcode = row.barcode,
                     .datepicked = row.datepicked.toString(Qt::ISODateWithMs),
                     .descr = row.descr,
                     .doc = row.doc,
                     .item = row.item,
                     .ordernum = row.ordernum,
                     .orderqty = row.orderqty,
                     .pickqty = row.pickqty});
  }
  return lines;
}
