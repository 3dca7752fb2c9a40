#include "delivery/PickingSession.h"

#include "base/Clock.h"
#include "base/Int32.h"
#include "delivery/DeliveryImport.h"
#include "delivery/PickRecorder.h"
#include "store/ManagedObjectContext.h"

#include <algorithm>
#include <utility>

namespace {

BoxLine &firstLineOf(const QString &item, std::vector<BoxLine> &lines) {
  return *std::find_if(lines.begin(), lines.end(),
                       [&](const BoxLine &line) { return line.item == item; });
}

}  // namespace

PickingSession::PickingSession(const Clock &clock, const PickingRules &rules, QObject *parent)
    : QObject(parent), m_clock(clock), m_rules(rules) {}

bool PickingSession::importDelivery(const Delivery &delivery) {
  setArrayItems(std::make_shared<ItemLines>(itemLinesOf(delivery)));
  setArrayPick(std::make_shared<PickList>(boxesOf(delivery)));
  const OrderLine &first = delivery.lines.front();
  const auto picks = managedObjectContext()->pickingsOfOrder(first.doc, first.ordernum);
  if (!picks) {
    return false;
  }
  restoreBoxes(*picks, *m_arrayPick);
  restoreItemLines(*picks, *m_arrayItems, m_rules);
  return true;
}

void PickingSession::setArrayPick(std::shared_ptr<PickList> list) {
  m_arrayPick = std::move(list);
  m_openBoxCodes.reset();
}

void PickingSession::setArrayItems(std::shared_ptr<ItemLines> items) {
  m_arrayItems = std::move(items);
  m_itemPositions.clear();
  for (std::size_t i = 0; m_arrayItems && i < m_arrayItems->size(); ++i) {
    m_itemPositions.insert(m_arrayItems->at(i).item, i);
  }
}

const PickList &PickingSession::pickList() const {
  static const PickList kNone;
  return m_arrayPick ? *m_arrayPick : kNone;
}

void PickingSession::start() {
  m_doc = m_jsonResult ? m_jsonResult->doc : QString();
  setOpenBox(-1);
  emit started();
}

void PickingSession::stop() {
  setOpenBox(-1);
  emit stopped();
}

void PickingSession::openBox(int index) {
  setOpenBox(index);
  emit boxOpened();
}

void PickingSession::setOpenBox(int index) {
  m_curBoxIndex = index;
  m_openBoxCodes.reset();
}

const PickEntry *PickingSession::openEntry() const {
  const auto index = static_cast<std::size_t>(m_curBoxIndex);
  return m_curBoxIndex == -1 || index >= pickList().size() ? nullptr : &pickList()[index];
}

const std::vector<BoxLine> &PickingSession::openBoxLines() const {
  static const std::vector<BoxLine> kNone;
  const PickEntry *entry = openEntry();
  return entry == nullptr ? kNone : boxitemsOf(*entry);
}

std::optional<int> PickingSession::boxNamed(const QString &box) const {
  const PickList &list = pickList();
  const auto entry = std::find_if(list.begin(), list.end(), [&](const PickEntry &candidate) {
    return boxOf(candidate) == box;
  });
  return entry == list.end() ? std::nullopt : std::optional(static_cast<int>(entry - list.begin()));
}

std::optional<ScanMatch> PickingSession::find(const QString &code) {
  if (!m_openBoxCodes) {
    m_openBoxCodes.emplace(openBoxLines());
  }
  if (const auto line = m_openBoxCodes->find(code)) {
    return *line;
  }
  if (const LoosePick *loose = loosePickWithCode(pickList(), code)) {
    return loosePickAgain(*loose, m_clock.now());
  }
  if (const auto article = articleWithCode(*managedObjectContext(), code)) {
    return loosePickOf(*article, m_doc, pickList(), m_clock.now());
  }
  return std::nullopt;
}

void PickingSession::addLoosePick(const LoosePick &loose) {
  m_arrayPick->emplace_back(loose);
}

BoxRecord &PickingSession::openBoxRecord() {
  return std::get<BoxRecord>(m_arrayPick->at(static_cast<std::size_t>(m_curBoxIndex)));
}

bool PickingSession::bookQuantity(std::size_t line, bool isFiltered, std::int32_t currentQty,
                                  std::int32_t addQty) {
  BoxRecord &box = openBoxRecord();
  BoxLine &booked = box.boxitems.at(line);
  BoxLine &stored = isFiltered ? firstLineOf(booked.item, box.boxitems) : booked;
  BoxLine changed = stored;
  changed.pickqty = wrappingAdd(currentQty, addQty);
  const bool isSaved = recordPick(*managedObjectContext(), m_clock, box.box, changed, m_rules);
  if (!isSaved && m_rules.refusesUnsavedQuantities) {
    emit lineNotSaved(changed, box.box, managedObjectContext()->errorString());
    return false;
  }
  changeItemLines(booked, changed.pickqty.value());
  booked.pickqty = changed.pickqty;
  stored.pickqty = changed.pickqty;
  box.boxpickqty = wrappingAdd(box.boxpickqty, addQty);
  if (isSaved) {
    emit lineSaved(changed, box.box);
  }
  return true;
}

void PickingSession::changeItemLines(const BoxLine &line, std::int32_t pickqty) {
  const std::int32_t change = wrappingSubtract(pickqty, line.pickqty.value());
  const auto [begin, end] = std::as_const(m_itemPositions).equal_range(line.item);
  for (auto position = begin; position != end; ++position) {
    Quantity &picked = m_arrayItems->at(*position).pickqty;
    picked = m_rules.sumsItemsOverBoxes ? wrappingAdd(picked.value(), change) : pickqty;
  }
}

void PickingSession::recordLine(std::size_t line) {
  const PickEntry &entry = pickList().at(static_cast<std::size_t>(m_curBoxIndex));
  const BoxLine &recorded = boxitemsOf(entry).at(line);
  if (recordPick(*managedObjectContext(), m_clock, boxOf(entry), recorded, m_rules)) {
    emit lineSaved(recorded, boxOf(entry));
  }
}

void PickingSession::recordWorkingList() {
  if (!m_doc.isNull()) {
    recordPickList(*managedObjectContext(), m_doc, pickList());
  }
}

void PickingSession::bookLoosePick(const QString &code, std::int32_t qty) {
  int position = -1;
  for (std::size_t i = 0; position == -1 && i < pickList().size(); ++i) {
    auto *loose = std::get_if<LoosePick>(&m_arrayPick->at(i));
    if (loose != nullptr && isCode(loose->barcode, code)) {
      loose->qty = qty;
      position = static_cast<int>(i);
    }
  }
  emit loosePickBooked(position);
}
