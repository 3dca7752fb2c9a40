#include "delivery/PickRecorder.h"

#include "delivery/SaveByRules.h"
#include "store/ManagedObjectContext.h"
#include "store/SaveOrAbort.h"

#include <algorithm>

namespace {

Picking pickingOf(const PickEntry &entry) {
  if (const auto *loose = std::get_if<LoosePick>(&entry)) {
    return {.barcode = loose->barcode,
            .box = loose->box,
            .datepicked = loose->datepicked,
            .descr = loose->descr,
            .doc = loose->doc,
            .item = loose->item,
            .ordernum = loose->ordernum,
            .pickqty = loose->qty,
            .sent = loose->sent};
  }
  return {.box = boxOf(entry)};
}

}  // namespace

bool recordPick(ManagedObjectContext &context, const Clock &clock, const QString &box,
                const BoxLine &line, const PickingRules &rules) {
  const auto rows = context.pickingsOfLine(line.doc, box, line.item);
  if (!rows) {
    return false;
  }
  if (!rows->empty()) {
    const Picking &row = rows->front();
    context.setPickqty(row, line.pickqty.value());
    if (rules.resendsCorrections && row.pickqty != line.pickqty.value()) {
      context.setSent(row, 0);
    }
  } else {
    context.insert(Picking{.barcode = line.barcode,
                           .box = box,
                           .datepicked = clock.now(),
                           .descr = line.descr,
                           .doc = line.doc,
                           .item = line.item,
                           .ordernum = line.ordernum,
                           .orderqty = line.orderqty.value(),
                           .pickqty = line.pickqty.value(),
                           .sent = 0});
  }
  return saveByRules(context, rules);
}

void recordPickList(ManagedObjectContext &context, const QString &doc, const PickList &list) {
  const auto rows = context.pickings(doc);
  if (!rows) {
    return;
  }
  for (const PickEntry &entry : list) {
    const auto *loose = std::get_if<LoosePick>(&entry);
    if (loose == nullptr) {
      continue;
    }
    const auto row = std::find_if(rows->begin(), rows->end(),
                                  [&](const Picking &r) { return r.item == loose->item; });
    if (row != rows->end()) {
      context.setPickqty(*row, loose->qty);
    }
  }
  for (std::size_t i = rows->size(); i < list.size(); ++i) {
    context.insert(pickingOf(list[i]));
  }
  saveOrAbort(context);
}
