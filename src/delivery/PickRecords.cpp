#include "delivery/PickRecords.h"

const QString &boxOf(const PickEntry &entry) {
  return std::visit([](const auto &record) -> const QString & { return record.box; }, entry);
}

std::int32_t boxorderqtyOf(const PickEntry &entry) {
  const auto *box = std::get_if<BoxRecord>(&entry);
  return box == nullptr ? 0 : box->boxorderqty;
}

std::int32_t boxpickqtyOf(const PickEntry &entry) {
  const auto *box = std::get_if<BoxRecord>(&entry);
  return box == nullptr ? 0 : box->boxpickqty;
}

const std::vector<BoxLine> &boxitemsOf(const PickEntry &entry) {
  static const std::vector<BoxLine> kNone;
  const auto *box = std::get_if<BoxRecord>(&entry);
  return box == nullptr ? kNone : box->boxitems;
}

QString ordernumOf(const PickEntry &entry) {
  const auto *loose = std::get_if<LoosePick>(&entry);
  return loose == nullptr ? QString() : loose->ordernum;
}

QString deliveryNumberOf(const PickList &list) {
  const bool hasLine = !list.empty() && !boxitemsOf(list.front()).empty();
  return hasLine ? boxitemsOf(list.front()).front().doc : QString();
}
