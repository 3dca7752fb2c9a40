#include "history/HistoryLines.h"

#include "base/Int32.h"

#include <QHash>

ItemLines historyLines(const std::vector<Picking> &rows) {
  ItemLines lines;
  QHash<QString, std::size_t> positions;
  for (const Picking &row : rows) {
    const auto known = positions.constFind(row.item);
    if (known != positions.cend()) {
      Quantity &orderqty = lines[*known].orderqty;
      orderqty = wrappingAdd(orderqty.value(), row.pickqty);
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
