#include "delivery/ScanMatch.h"

#include "delivery/PickingRules.h"
#include "store/ManagedObjectContext.h"

bool isCode(const QString &text, const QString &code) {
  return !text.isNull() && text == code;
}

const LoosePick *loosePickWithCode(const PickList &list, const QString &code) {
  for (const PickEntry &entry : list) {
    const auto *loose = std::get_if<LoosePick>(&entry);
    if (loose != nullptr && (isCode(loose->barcode, code) || isCode(loose->item, code))) {
      return loose;
    }
  }
  return nullptr;
}

std::optional<Items> articleWithCode(ManagedObjectContext &context, const QString &code) {
  // The context would bind a null string as NULL, which equals nothing in SQL.
  const QString text = code.isNull() ? QStringLiteral("") : code;
  const auto articles = context.itemsForCode(text);
  return !articles || articles->empty() ? std::nullopt : std::optional(articles->front());
}

BoxLine foreignLineOf(const Items &article, const BoxLine &neighbour) {
  return {.barcode = article.barcode,
          .descr = article.descr,
          .doc = neighbour.doc,
          .item = article.item,
          .ordernum = neighbour.ordernum};
}

LoosePick loosePickAgain(const LoosePick &earlier, const QDateTime &now) {
  LoosePick again = earlier;
  again.datepicked = now;
  again.qty = 0;
  again.sent = 0;
  return again;
}

LoosePick loosePickOf(const Items &article, const QString &doc, const PickList &list,
                      const QDateTime &now) {
  return {.barcode = article.barcode,
          .box = PickingRules::kLooseBox,
          .datepicked = now,
          .descr = article.descr,
          .doc = doc,
          .item = article.item,
          .ordernum = list.empty() ? QString() : ordernumOf(list.front()),
          .qty = 0,
          .sent = 0};
}
