#include "picking/detailViewController.h"

#include "base/Int32.h"
#include "delivery/PickFilter.h"
#include "delivery/PickRecorder.h"
#include "delivery/ScanMatch.h"
#include "picking/PickingActions.h"
#include "picking/ScanTrailViewController.h"
#include "picking/actionPickerViewController.h"
#include "picking/changeQuantityViewController.h"
#include "sending/PickingExport.h"
#include "sending/PickingSender.h"
#include "store/ManagedObjectContext.h"
#include "summary/SummaryOverlay.h"
#include "summary/pickTableCell.h"
#include "view/Environment.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int kPickingCompletedTag = 199;
/// The segment of the ask-for-quantity switch with which the quantity field goes along with the
/// scan field.
constexpr int kAskForQty = 1;

}  // namespace

detailViewController::detailViewController(Environment &environment, QObject *parent)
    : ViewController(QStringLiteral("detailViewController"), environment, parent) {
  txtBarcode->setDelegate(this);
  txtBarcode->setEnabled(false);
  txtQuantity->setEnabled(false);
  btnOptions->setTitle(QStringLiteral("Options"));
  btnOptions->setEnabled(false);
  btnOptions->setTitleColor(Colour::grey);
  segmentedControl->setTitles(kPickFilterTitles);
  tblItems->setDataSource(this);
  clearTotals();
  showOpenBox();
}

detailViewController::~detailViewController() = default;

void detailViewController::viewDidLoad() {
  m_scanStarted = false;
  segmAskForQty->setSelectedSegmentIndex(kAskForQty);
  connect(segmentedControl, &SegmentedControl::valueChanged, this,
          &detailViewController::segmentedControlValueChanged);
  m_actionPicker = new actionPickerViewController(environment(), this);
  m_actionPicker->keepAfterDismissal();
  m_actionPicker->setDelegate(this);
  m_scanTrail = new ScanTrailViewController(environment(), this);
  m_scanTrail->keepAfterDismissal();
}

void detailViewController::setCurBoxIndex(int index) {
  m_curBoxIndex = index;
  m_openBoxCodes.reset();
  showOpenBox();
}

void detailViewController::setArrayPick(std::shared_ptr<PickList> list) {
  m_arrayPick = std::move(list);
  m_openBoxCodes.reset();
}

void detailViewController::setArrayItems(std::shared_ptr<ItemLines> items) {
  m_arrayItems = std::move(items);
  m_itemPositions.clear();
  for (std::size_t i = 0; m_arrayItems && i < m_arrayItems->size(); ++i) {
    m_itemPositions.insert(m_arrayItems->at(i).item, i);
  }
}

const PickList &detailViewController::pickList() const {
  static const PickList kNone;
  return m_arrayPick ? *m_arrayPick : kNone;
}

void detailViewController::enableScanning() {
  txtBarcode->setEnabled(true);
  if (segmAskForQty->selectedSegmentIndex() == kAskForQty) {
    txtQuantity->setEnabled(true);
  }
  btnOptions->setEnabled(true);
  btnOptions->setTitleColor(Colour::blue);
  lblSaved->setText(QString());
}

void detailViewController::disableScanning() {
  txtBarcode->setEnabled(false);
  if (segmAskForQty->selectedSegmentIndex() == kAskForQty) {
    txtQuantity->setEnabled(false);
  }
  btnOptions->setEnabled(false);
  btnOptions->setTitleColor(Colour::grey);
}

void detailViewController::clearTotals() {
  for (Label *total : {lblTotalPick, lblTotalOrder, lblTotalDiff}) {
    total->setText(QStringLiteral("-"));
  }
}

void detailViewController::showOpenBox() {
  const auto index = static_cast<std::size_t>(m_curBoxIndex);
  const bool isOpen = m_curBoxIndex != -1 && index < pickList().size();
  lblOpenBox->setText(isOpen ? boxOf(pickList()[index]) : QStringLiteral("-"));
  lblScanState->setText(isOpen ? QStringLiteral("Ready to scan")
                               : QStringLiteral("Open a box first"));
  lblScanState->setTextColor(isOpen ? Colour::green : Colour::grey);
  txtBarcode->setTakesScans(isOpen);
}

bool detailViewController::textFieldShouldReturn(TextField &field) {
  if (segmentedControl->selectedSegmentIndex() != AllLines) {
    segmentedControl->setSelectedSegmentIndex(AllLines);
  }
  if (m_curBoxIndex == -1) {
    return false;
  }
  if (&field != txtBarcode) {
    return true;
  }
  const QString code = txtBarcode->text();
  if (const auto row = openBoxLineWithCode(code)) {
    displayQuantityViewControllerForIndexPath(static_cast<int>(*row));
    m_isKeypadForScan = true;
    noteScan(code, ScanOutcome::Found, static_cast<int>(*row) + 1);
  } else if (const LoosePick *loose = loosePickWithCode(pickList(), code)) {
    noteScan(code, ScanOutcome::Loose);
    openKeypadOnLastRow(loosePickAgain(*loose, environment().clock->now()));
  } else if (const auto article = articleWithCode(managedObjectContext(), code)) {
    noteScan(code, ScanOutcome::Loose);
    openKeypadOnLastRow(loosePickOf(*article, m_doc, pickList(), environment().clock->now()));
  } else {
    noteScan(code, ScanOutcome::Unknown);
    refuseUnknownItem(code);
    return false;
  }
  txtBarcode->setText(QString());
  return true;
}

void detailViewController::noteScan(const QString &code, ScanOutcome outcome, int line) {
  environment().scans.add(
      {.time = environment().clock->timeOfDay(), .code = code, .outcome = outcome, .line = line});
}

TextField *detailViewController::scanField() const {
  return m_curBoxIndex == -1 ? nullptr : txtBarcode;
}

void detailViewController::scanStateTouched() {
  presentViewController(m_scanTrail, PresentationStyle::Popover, lblScanState);
}

void detailViewController::openKeypadOnLastRow(LoosePick loose) {
  m_arrayPick->emplace_back(std::move(loose));
  tblItems->reloadData();
  displayQuantityViewControllerForIndexPath(tblItems->numberOfRows() - 1);
}

void detailViewController::refuseUnknownItem(const QString &code) {
  environment().alerts.show({.title = QStringLiteral("Unknown Item"),
                             .message = QStringLiteral("Item %1 not found!").arg(code)});
  txtBarcode->setText(QString());
  environment().sounds->playSystemSound(SoundPlayer::kErrorTone);
}

const std::vector<BoxLine> &detailViewController::openBoxLines() const {
  return boxitemsOf(pickList().at(static_cast<std::size_t>(m_curBoxIndex)));
}

std::optional<std::size_t> detailViewController::openBoxLineWithCode(const QString &code) {
  if (!m_openBoxCodes) {
    m_openBoxCodes.emplace(openBoxLines());
  }
  return m_openBoxCodes->find(code);
}

std::size_t detailViewController::linePosition(int row) const {
  const auto shown = static_cast<std::size_t>(row);
  return segmentedControl->selectedSegmentIndex() == AllLines ? shown : m_arrayDisplay.at(shown);
}

int detailViewController::numberOfRowsInSection(const TableView & /*table*/, int /*section*/) {
  if (m_curBoxIndex == -1 || pickList().empty()) {
    return 0;
  }
  m_arrayDisplay.clear();
  if (segmentedControl->selectedSegmentIndex() == AllLines) {
    return static_cast<int>(openBoxLines().size());
  }
  m_arrayDisplay = linesShownBy(segmentedControl->selectedSegmentIndex(), openBoxLines());
  return static_cast<int>(m_arrayDisplay.size());
}

QVariant detailViewController::cellForRowAtIndexPath(const TableView & /*table*/, int row) {
  if (m_curBoxIndex == -1) {
    return {};
  }
  return QVariant::fromValue(pickTableCell::ofLine(openBoxLines().at(linePosition(row)), row));
}

QVariant detailViewController::viewForHeaderInSection(const TableView & /*table*/,
                                                      int /*section*/) {
  return QVariant::fromValue(pickTableCell::header());
}

double detailViewController::heightForRowAtIndexPath(const TableView & /*table*/, int /*row*/) {
  return pickTableCell::kHeight;
}

double detailViewController::heightForHeaderInSection(const TableView & /*table*/,
                                                      int /*section*/) {
  return pickTableCell::kHeight;
}

void detailViewController::didSelectRowAtIndexPath(TableView & /*table*/, int row) {
  displayQuantityViewControllerForIndexPath(row);
}

void detailViewController::markRow(int row) {
  tblItems->selectRow(row);
  tblItems->setCellBackground(row, Colour::blue);
}

void detailViewController::displayQuantityViewControllerForIndexPath(int row) {
  m_isKeypadForScan = false;
  tblItems->reloadData();
  if (row < 0 || row >= tblItems->rowCount()) {
    environment().sounds->playSystemSound(SoundPlayer::kErrorTone);
    return;
  }
  markRow(row);
  auto *keypad = qobject_cast<changeQuantityViewController *>(
      environment().storyboard.instantiateViewController(
          QStringLiteral("changeQuantityViewController"), environment(), this));
  presentViewController(keypad, PresentationStyle::FormSheet);
  const BoxLine &line = openBoxLines().at(linePosition(row));
  keypad->setDisplayValues(line.item, line.barcode, line.descr, line.pickqty.text(),
                           line.orderqty.text());
  keypad->setDelegate(this);
  keypad->setRow(row);
}

void detailViewController::CloseViewControllerWithGetQtyAtRow(std::int32_t row,
                                                              std::int32_t currentQty,
                                                              std::int32_t addQty) {
  const std::int32_t pickqty = wrappingAdd(currentQty, addQty);
  auto &box = std::get<BoxRecord>(m_arrayPick->at(static_cast<std::size_t>(m_curBoxIndex)));
  BoxLine &shown = box.boxitems.at(linePosition(row));
  shown.pickqty = pickqty;
  const QString item = shown.item;
  int storeRow = row;
  if (segmentedControl->selectedSegmentIndex() != AllLines) {
    // A filter shows the line, but it is the first line of its item in the box that is stored.
    const auto first = std::find_if(box.boxitems.begin(), box.boxitems.end(),
                                    [&](const BoxLine &line) { return line.item == item; });
    first->pickqty = pickqty;
    storeRow = static_cast<int>(first - box.boxitems.begin());
  }
  tblItems->reloadData();
  if (!m_arrayDisplay.empty()) {
    markRow(row);
  }
  setItemLines(item, pickqty);
  moveBoxTotal(addQty);
  saveArrayRow(storeRow);
  if (m_delegate) {
    m_delegate->QuantityChangedOnDetailView();
  }
  if (std::exchange(m_isKeypadForScan, false)) {
    environment().scans.bookLatestFound();
  }
  txtBarcode->becomeFirstResponder();
}

void detailViewController::setItemLines(const QString &item, std::int32_t pickqty) {
  const auto [begin, end] = std::as_const(m_itemPositions).equal_range(item);
  for (auto position = begin; position != end; ++position) {
    m_arrayItems->at(*position).pickqty = pickqty;
  }
}

void detailViewController::moveBoxTotal(std::int32_t added) {
  auto &box = std::get<BoxRecord>(m_arrayPick->at(static_cast<std::size_t>(m_curBoxIndex)));
  box.boxpickqty = wrappingAdd(box.boxpickqty, added);
  lblTotalPick->setText(QString::number(box.boxpickqty));
  lblTotalDiff->setText(QString::number(wrappingSubtract(box.boxpickqty, box.boxorderqty)));
}

void detailViewController::saveArrayRow(int row) {
  const PickEntry &entry = pickList().at(static_cast<std::size_t>(m_curBoxIndex));
  const BoxLine &line = boxitemsOf(entry).at(static_cast<std::size_t>(row));
  if (managedObjectContext() != nullptr &&
      recordPick(*managedObjectContext(), *environment().clock, boxOf(entry), line)) {
    showSaved(line);
  }
}

void detailViewController::showSaved(const BoxLine &line) {
  const QTime time = environment().clock->timeOfDay();
  const PickEntry &entry = pickList().at(static_cast<std::size_t>(m_curBoxIndex));
  lblSaved->setText(QStringLiteral("Saved %1 × %2 in box %3, %4")
                        .arg(line.pickqty.text(), line.item, boxOf(entry),
                             time.toString(QStringLiteral("HH:mm:ss"))));
}

void detailViewController::ChangePickingRowInManagedContext() {
  if (!m_doc.isNull() && managedObjectContext() != nullptr) {
    recordPickList(*managedObjectContext(), m_doc, pickList());
  }
}

void detailViewController::btnOptionsTouched() {
  txtBarcode->resignFirstResponder();
  presentViewController(m_actionPicker, PresentationStyle::Popover, btnOptions);
}

void detailViewController::selectedAction(const QString &title) {
  if (title == kCompleteAndSend) {
    environment().alerts.show({.title = QStringLiteral("Picking Completed?"),
                               .message = QStringLiteral("Are you sure that picking is completed?"),
                               .buttons = {QStringLiteral("NO"), QStringLiteral("YES")},
                               .cancelButtonIndex = 0,
                               .tag = kPickingCompletedTag,
                               .delegate = this});
  } else if (title == kSendEmail) {
    exportPicking(environment(), *managedObjectContext(), deliveryNumberOf(pickList()), this);
  } else if (title == kViewSummary) {
    showDeliveryDetailsViewController();
  }
}

void detailViewController::clickedButtonAtIndex(const AlertView &alert, int buttonIndex) {
  if (alert.tag == kPickingCompletedTag && buttonIndex != alert.cancelButtonIndex) {
    sendPickingToServer();
  }
}

void detailViewController::sendPickingToServer() {
  m_sender = std::make_unique<PickingSender>(environment(), *managedObjectContext(), this);
  m_sender->send(deliveryNumberOf(pickList()));
}

void detailViewController::showDeliveryDetailsViewController() {
  m_deliveryDetailsVC = showSummary(*this, environment(), m_deliveryDetailsVC,
                                    m_arrayItems ? m_arrayItems : std::make_shared<ItemLines>());
}
