// Imports arbitrary answers to a lookup. No line must be lost, duplicated or moved, and no quantity
// counted twice.

#include "Property.h"
#include "base/Int32.h"
#include "delivery/DeliveryImport.h"
#include "service/DeliveryAnswer.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <numeric>

namespace {

bool isSameLine(const BoxLine &line, const OrderLine &delivered) {
  return line.item == delivered.item && line.barcode == delivered.barcode &&
         line.descr == delivered.descr && line.doc == delivered.doc &&
         line.ordernum == delivered.ordernum && line.orderqty == delivered.qty &&
         line.pickqty == Quantity();
}

template <class Lines, class NumberOf>
std::int32_t sumOf(const Lines &lines, const NumberOf &numberOf) {
  return std::accumulate(
      lines.begin(), lines.end(), std::int32_t{0},
      [&](std::int32_t sum, const auto &line) { return wrappingAdd(sum, numberOf(line)); });
}

void checkTexts(const Delivery &answer) {
  for (const OrderLine &line : answer.lines) {
    for (const QString &text :
         {line.doc, line.ordernum, line.item, line.barcode, line.descr, line.carton}) {
      require(!text.isNull(), "a missing text is empty");
    }
    require(Quantity::delivered(line.qty.text()).text() == line.qty.text(),
            "a quantity keeps its received text");
  }
}

void checkBoxes(const Delivery &answer, const PickList &boxes) {
  QHash<QString, std::size_t> positions;
  QStringList names;
  for (const OrderLine &line : answer.lines) {
    if (!names.contains(line.carton)) {
      names.append(line.carton);
    }
  }
  require(names.size() == static_cast<qsizetype>(boxes.size()), "every carton is one box");
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    require(boxOf(boxes[i]) == names[static_cast<qsizetype>(i)],
            "boxes are in the order of their first lines");
    positions.insert(boxOf(boxes[i]), i);
    require(
        boxorderqtyOf(boxes[i]) ==
            sumOf(boxitemsOf(boxes[i]), [](const BoxLine &line) { return line.orderqty.value(); }),
        "the ordered quantity of a box is the sum over its lines");
  }
  std::vector<std::size_t> next(boxes.size(), 0);
  for (const OrderLine &line : answer.lines) {
    const std::size_t box = positions.value(line.carton);
    const std::vector<BoxLine> &lines = boxitemsOf(boxes[box]);
    require(next[box] < lines.size() && isSameLine(lines[next[box]], line),
            "a box has its lines in the received order");
    ++next[box];
  }
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    require(next[i] == boxitemsOf(boxes[i]).size(), "a box has no other lines");
  }
}

void checkItems(const Delivery &answer, const ItemLines &items) {
  QSet<QString> codes;
  for (const BoxLine &item : items) {
    require(!codes.contains(item.item), "an item code has one line");
    codes.insert(item.item);
  }
  for (const OrderLine &line : answer.lines) {
    require(codes.contains(line.item), "no item is lost");
  }
  require(sumOf(items, [](const BoxLine &line) { return line.orderqty.value(); }) ==
              sumOf(answer.lines, [](const OrderLine &line) { return line.qty.value(); }),
          "the ordered quantity of all items is that of all lines");
}

/// Returns one pick for every line. Its quantity is the number of the line, starting at 1.
std::vector<Picking> picksOf(const Delivery &answer) {
  std::vector<Picking> picks;
  for (const OrderLine &line : answer.lines) {
    picks.push_back({.box = line.carton,
                     .doc = line.doc,
                     .item = line.item,
                     .pickqty = static_cast<std::int32_t>(picks.size()) + 1});
  }
  return picks;
}

/// Returns the quantity of the last of `picks` for which `isMeant` is true; 0 if there is none.
template <class IsMeant>
std::int32_t lastQuantity(const std::vector<Picking> &picks, const IsMeant &isMeant) {
  const auto last = std::find_if(picks.rbegin(), picks.rend(), isMeant);
  return last == picks.rend() ? 0 : last->pickqty;
}

void checkRestoredBox(const std::vector<Picking> &picks, const PickEntry &entry) {
  constexpr std::size_t kRestoredLines = 4;
  std::vector<Picking> own;
  std::copy_if(picks.begin(), picks.end(), std::back_inserter(own),
               [&](const Picking &pick) { return pick.box == boxOf(entry); });
  require(boxpickqtyOf(entry) == sumOf(own, [](const Picking &pick) { return pick.pickqty; }),
          "the picked quantity of a box is the sum of its picks");
  QSet<QString> seen;
  std::size_t position = 0;
  for (const BoxLine &line : boxitemsOf(entry)) {
    const bool takesPicks = position++ < kRestoredLines && !seen.contains(line.item);
    seen.insert(line.item);
    const std::int32_t last =
        lastQuantity(own, [&](const Picking &pick) { return pick.item == line.item; });
    require(line.pickqty.value() == (takesPicks ? last : 0),
            "the first matching line of a box takes the last pick");
  }
}

void checkRestoring(const Delivery &answer, PickList boxes, ItemLines items) {
  const std::vector<Picking> picks = picksOf(answer);
  restoreBoxes(picks, boxes);
  for (const PickEntry &entry : boxes) {
    checkRestoredBox(picks, entry);
  }
  restoreItemLines(picks, items);
  for (const BoxLine &line : items) {
    require(line.pickqty.value() ==
                lastQuantity(picks, [&](const Picking &pick) { return pick.item == line.item; }),
            "an item line takes the last pick of its item");
  }
}

void checkDate(const QString &delivered) {
  const QString shown = headerDate(delivered);
  const bool isTurned = delivered.size() == 10 && shown.size() == 10 &&
                        shown.left(2) == delivered.mid(3, 2) &&
                        shown.mid(3, 2) == delivered.left(2) && shown.mid(6) == delivered.mid(6);
  require(shown == delivered || isTurned,
          "a date is shown with day and month swapped or unchanged");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const auto body =
      QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
  const auto answer = parseDeliveryAnswer(body);
  checkDate(QString::fromUtf8(body));
  // The checks take quadratic time in the number of lines.
  constexpr std::size_t kMaxLines = 500;
  if (!answer || answer->lines.size() > kMaxLines) {
    return 0;
  }
  checkTexts(*answer);
  const PickList boxes = boxesOf(*answer);
  const ItemLines items = itemLinesOf(*answer);
  checkBoxes(*answer, boxes);
  checkItems(*answer, items);
  checkRestoring(*answer, boxes, items);
  checkDate(answer->cdate);
  checkDate(answer->date);
  return 0;
}
