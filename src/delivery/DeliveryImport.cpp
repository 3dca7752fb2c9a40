#include "delivery/DeliveryImport.h"

#include "base/Int32.h"

#include <QDate>
#include <QHash>

#include <algorithm>

namespace {

using Positions = QHash<QString, std::size_t>;

/// Only this number of lines of a box, from its first, get their earlier quantity back.
constexpr std::size_t kRestoredLines = 4;

BoxLine boxLineOf(const OrderLine &line) {
  BoxLine result;
  result.barcode = line.barcode;
  result.descr = line.descr;
  result.doc = line.doc;
  result.item = line.item;
  result.ordernum = line.ordernum;
  result.orderqty = line.qty;
  return result;
}

/// Returns a line for a pick of an article that is not ordered.
BoxLine foreignLineOf(const Picking &pick) {
  return {.barcode = pick.barcode,
          .descr = pick.descr,
          .doc = pick.doc,
          .item = pick.item,
          .ordernum = pick.ordernum,
          .pickqty = pick.pickqty};
}

/// Restores `pick` in all lines of its item.
void restoreEveryLine(const Picking &pick, std::vector<BoxLine> &lines) {
  std::int32_t left = pick.pickqty;
  BoxLine *last = nullptr;
  for (BoxLine &line : lines) {
    if (line.item == pick.item) {
      const std::int32_t taken = std::min(left, std::max(line.orderqty.value(), 0));
      line.pickqty = taken;
      left = wrappingSubtract(left, taken);
      last = &line;
    }
  }
  if (last != nullptr) {
    last->pickqty = wrappingAdd(last->pickqty.value(), left);
  } else {
    lines.push_back(foreignLineOf(pick));
  }
}

void restoreLine(const Picking &pick, std::vector<BoxLine> &lines) {
  const auto end =
      lines.begin() + static_cast<std::ptrdiff_t>(std::min(kRestoredLines, lines.size()));
  const auto line =
      std::find_if(lines.begin(), end, [&](const BoxLine &l) { return l.item == pick.item; });
  if (line != end) {
    line->pickqty = pick.pickqty;
  }
}

}  // namespace

ItemLines itemLinesOf(const Delivery &delivery) {
  ItemLines items;
  Positions positions;
  positions.reserve(static_cast<qsizetype>(delivery.lines.size()));
  for (const OrderLine &line : delivery.lines) {
    const auto known = positions.constFind(line.item);
    if (known != positions.cend()) {
      Quantity &orderqty = items[*known].orderqty;
      orderqty = wrappingAdd(orderqty.value(), line.qty.value());
    } else {
      positions.insert(line.item, items.size());
      items.push_back(boxLineOf(line));
    }
  }
  return items;
}

PickList boxesOf(const Delivery &delivery) {
  PickList boxes;
  Positions positions;
  // The lines of a carton are usually adjacent; each group needs one lookup only.
  for (auto first = delivery.lines.begin(); first != delivery.lines.end();) {
    const QString &carton = first->carton;
    const auto last = std::find_if(first, delivery.lines.end(),
                                   [&](const OrderLine &line) { return line.carton != carton; });
    auto known = positions.constFind(carton);
    if (known == positions.cend()) {
      known = positions.insert(carton, boxes.size());
      boxes.emplace_back(BoxRecord{carton, 0, 0, {}});
      std::get<BoxRecord>(boxes.back()).boxitems.reserve(static_cast<std::size_t>(last - first));
    }
    auto &box = std::get<BoxRecord>(boxes[*known]);
    for (; first != last; ++first) {
      box.boxitems.push_back(boxLineOf(*first));
      box.boxorderqty = wrappingAdd(box.boxorderqty, first->qty.value());
    }
  }
  return boxes;
}

void restoreBoxes(const std::vector<Picking> &picks, PickList &boxes, const PickingRules &rules) {
  QHash<QString, BoxRecord *> byName;
  for (PickEntry &entry : boxes) {
    if (auto *box = std::get_if<BoxRecord>(&entry)) {
      byName.insert(box->box, box);
    }
  }
  for (const Picking &pick : picks) {
    if (BoxRecord *box = byName.value(pick.box)) {
      box->boxpickqty = wrappingAdd(box->boxpickqty, pick.pickqty);
      if (rules.restoresAllLines) {
        restoreEveryLine(pick, box->boxitems);
      } else {
        restoreLine(pick, box->boxitems);
      }
    }
  }
}

void restoreItemLines(const std::vector<Picking> &picks, ItemLines &items,
                      const PickingRules &rules) {
  Positions positions;
  positions.reserve(static_cast<qsizetype>(items.size()));
  for (std::size_t i = 0; i < items.size(); ++i) {
    positions.insert(items[i].item, i);
  }
  for (const Picking &pick : picks) {
    const auto known = positions.constFind(pick.item);
    if (known != positions.cend()) {
      Quantity &picked = items[*known].pickqty;
      picked = rules.sumsItemsOverBoxes ? wrappingAdd(picked.value(), pick.pickqty) : pick.pickqty;
    } else if (rules.restoresAllLines) {
      positions.insert(pick.item, items.size());
      items.push_back(foreignLineOf(pick));
    }
  }
}

QString headerDate(const QString &delivered) {
  const QDate date = QDate::fromString(delivered, QStringLiteral("MM/dd/yyyy"));
  return date.isValid() ? date.toString(QStringLiteral("dd/MM/yyyy")) : delivered;
}
