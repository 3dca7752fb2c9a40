#include "summary/pickTableCell.h"

#include "base/Int32.h"
#include "delivery/PickRecords.h"

pickTableCell pickTableCell::ofLine(const BoxLine &line, int row) {
  const std::int32_t pick = line.pickqty.value();
  const std::int32_t order = line.orderqty.value();
  pickTableCell cell;
  cell.item.text = line.item;
  cell.barcode.text = line.barcode;
  cell.descr.text = line.descr;
  cell.pickqty.text = QString::number(pick);
  cell.orderqty.text = QString::number(order);
  cell.diffqty.text = QString::number(wrappingSubtract(pick, order));
  cell.diffqty.textColor = pick == order ? Colour::green : Colour::red;
  cell.backgroundColor = row % 2 == 0 ? Colour::lightGrey : Colour::clear;
  return cell;
}

pickTableCell pickTableCell::header() {
  pickTableCell cell;
  cell.item.text = QStringLiteral("Item Code");
  cell.barcode.text = QStringLiteral("Barcode");
  cell.descr.text = QStringLiteral("Description");
  cell.pickqty.text = QStringLiteral("Pick");
  cell.orderqty.text = QStringLiteral("Order");
  cell.diffqty.text = QStringLiteral("Diff");
  cell.backgroundColor = Colour::darkGrey;
  return cell;
}
