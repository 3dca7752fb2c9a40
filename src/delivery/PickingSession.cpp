#include "delivery/PickingSession.h"

#include "base/Clock.h"
#include "base/Int32.h"
#include "delivery/DeliveryImport.h"
#include "delivery/EqualLines.h"
#include "delivery/PickRecorder.h"
#include "store/ManagedObjectContext.h"

#include <algorithm>
#include <utility>

PickingSession::PickingSession(const Clock &clock, const PickingRules &rules, QObject *parent)
    : QObject(parent), m_clock(clock), m_rules(rules) {}

bool PickingSession::importDelivery(const Delivery &delivery) {
  auto items = std::make_shared<ItemLines>(itemLinesOf(delivery));
  auto boxes = std::make_shared<PickList>(boxesOf(delivery));
  const OrderLine &first = delivery.lines.front();
  const auto picks = m_rules.restoresAllLines
                         ? managedObjectContext()->pickings(first.doc)
                         : managedObjectContext()->pickingsOfOrder(first.doc, first.ordernum);
  if (picks) {
    restoreBoxes(*picks, *boxes, m_rules);
    restoreItemLines(*picks, *items, m_rules);
  }
  setArrayItems(std::move(items));
  setArrayPick(std::move(boxes));
  return picks.has_value();
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
    return lineForScan(*line);
  }
  if (const LoosePick *loose = loosePickWithCode(pickList(), code)) {
    return loosePickAgain(*loose, m_clock.now());
  }
  if (const auto article = articleWithCode(*managedObjectContext(), code)) {
    return m_rules.addsForeignLines
               ? lineOfArticle(*article)
               : ScanMatch(loosePickOf(*article, m_doc, pickList(), m_clock.now()));
  }
  return std::nullopt;
}

std::size_t PickingSession::lineForScan(std::size_t line) const {
  return m_rules.sumsEqualLines ? lineToFill(openBoxLines()[line].item, openBoxLines()) : line;
}

std::optional<ScanMatch> PickingSession::lineOfArticle(const Items &article) const {
  const std::vector<BoxLine> &lines = openBoxLines();
  // The catalogue may have another barcode for an item of the box.
  if (const auto line = firstLineOf(article.item, lines)) {
    return lineForScan(*line);
  }
  return lines.empty() ? std::nullopt
                       : std::optional<ScanMatch>(foreignLineOf(article, lines.front()));
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
  const std::int32_t pickqty = wrappingAdd(currentQty, addQty);
  const QString item = box.boxitems.at(line).item;
  const bool storesFirstLine = isFiltered && !m_rules.sumsEqualLines;
  const std::size_t storedLine = storesFirstLine ? *firstLineOf(item, box.boxitems) : line;
  const BoxLine stored = lineToStore(storedLine, pickqty);
  const bool isSaved = recordPick(*managedObjectContext(), m_clock, box.box, stored, m_rules);
  if (!isSaved && m_rules.refusesUnsavedQuantities) {
    emit lineNotSaved(stored, box.box, managedObjectContext()->errorString());
    return false;
  }
  changeItemLines(box.boxitems.at(line), pickqty);
  box.boxitems.at(line).pickqty = pickqty;
  box.boxitems.at(storedLine).pickqty = pickqty;
  box.boxpickqty = wrappingAdd(box.boxpickqty, addQty);
  if (isSaved) {
    emit lineSaved(stored, box.box);
  }
  return true;
}

bool PickingSession::bookForeignLine(const BoxLine &line, std::int32_t qty) {
  std::vector<BoxLine> &lines = openBoxRecord().boxitems;
  lines.push_back(line);
  m_openBoxCodes.reset();
  if (!bookQuantity(lines.size() - 1, false, 0, qty)) {
    lines.pop_back();
    return false;
  }
  if (m_arrayItems && !m_itemPositions.contains(line.item)) {
    m_itemPositions.insert(line.item, m_arrayItems->size());
    m_arrayItems->push_back(lines.back());
  }
  return true;
}

BoxLine PickingSession::lineToStore(std::size_t line, std::int32_t pickqty) const {
  const std::vector<BoxLine> &lines = openBoxLines();
  BoxLine stored = lines.at(line);
  if (m_rules.sumsEqualLines) {
    const std::int32_t change = wrappingSubtract(pickqty, stored.pickqty.value());
    stored = sumOfLines(stored.item, lines);
    stored.pickqty = wrappingAdd(stored.pickqty.value(), change);
  } else {
    stored.pickqty = pickqty;
  }
  return stored;
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
  const BoxLine stored = lineToStore(line, boxitemsOf(entry).at(line).pickqty.value());
  if (recordPick(*managedObjectContext(), m_clock, boxOf(entry), stored, m_rules)) {
    emit lineSaved(stored, boxOf(entry));
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
