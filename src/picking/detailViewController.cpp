#include "picking/detailViewController.h"

#include "base/Int32.h"
#include "delivery/PickFilter.h"
#include "picking/PickingActions.h"
#include "picking/PickingAlerts.h"
#include "picking/ScanTrailViewController.h"
#include "picking/actionPickerViewController.h"
#include "picking/changeQuantityViewController.h"
#include "sending/PickingExport.h"
#include "sending/PickingSender.h"
#include "summary/SummaryOverlay.h"
#include "view/Environment.h"

#include <utility>

namespace {

/// While this segment of `segmAskForQty` is selected, the quantity field is enabled and disabled
/// together with the scan field.
constexpr int kAskForQty = 1;

}  // namespace

detailViewController::detailViewController(PickingSession &session, Environment &environment,
                                           QObject *parent)
    : ViewController(QStringLiteral("detailViewController"), environment, parent),
      m_session(session) {
  txtBarcode->setDelegate(this);
  txtBarcode->setEnabled(false);
  txtQuantity->setEnabled(false);
  btnOptions->setTitle(QStringLiteral("Options"));
  btnOptions->setEnabled(false);
  btnOptions->setTitleColor(Colour::grey);
  segmentedControl->setTitles(kPickFilterTitles);
  tblItems->setDataSource(this);
  m_openBox.clearTotals();
  showOpenBox();
  connect(this, &ViewController::presentedChanged, this, &detailViewController::showOpenBox);
  connect(this, &ViewController::overlayChanged, this, &detailViewController::showOpenBox);
  connect(&session, &PickingSession::started, this, &detailViewController::pickingStarted);
  connect(&session, &PickingSession::stopped, this, &detailViewController::pickingStopped);
  connect(&session, &PickingSession::boxOpened, this, &detailViewController::boxOpened);
  connect(&session, &PickingSession::loosePickBooked, this, &detailViewController::loosePickBooked);
  connect(&session, &PickingSession::lineSaved, this, &detailViewController::showSaved);
  connect(&session, &PickingSession::lineNotSaved, this, &detailViewController::showNotSaved);
}

detailViewController::~detailViewController() = default;

void detailViewController::viewDidLoad() {
  segmAskForQty->setSelectedSegmentIndex(kAskForQty);
  connect(segmentedControl, &SegmentedControl::valueChanged, this,
          &detailViewController::segmentedControlValueChanged);
  m_actionPicker = new actionPickerViewController(environment(), this);
  m_actionPicker->keepAfterDismissal();
  m_actionPicker->setDelegate(this);
  m_scanTrail = new ScanTrailViewController(m_scans, environment(), this);
  m_scanTrail->keepAfterDismissal();
}

void detailViewController::pickingStarted() {
  setScanningEnabled(true);
  m_scans.clear();
  lblSaved->setText(QString());
  showOpenBox();
}

void detailViewController::pickingStopped() {
  m_openBox.clearTotals();
  tblItems->reloadData();
  setScanningEnabled(false);
  showOpenBox();
}

void detailViewController::boxOpened() {
  if (environment().rules.closesSummaryForBox && overlay() != nullptr) {
    overlay()->removeFromSuperview(Flip::FromRight);
  }
  showOpenBox();
  tblItems->reloadData();
  m_openBox.showOrdered(m_session.openEntry());
  m_openBox.showPicked(m_session.openEntry());
  txtBarcode->becomeFirstResponder();
}

void detailViewController::loosePickBooked(int position) {
  tblItems->reloadData();
  markRow(position);
}

void detailViewController::setScanningEnabled(bool isEnabled) {
  txtBarcode->setEnabled(isEnabled);
  if (segmAskForQty->selectedSegmentIndex() == kAskForQty) {
    txtQuantity->setEnabled(isEnabled);
  }
  btnOptions->setEnabled(isEnabled);
  btnOptions->setTitleColor(isEnabled ? Colour::blue : Colour::grey);
}

void detailViewController::showOpenBox() {
  m_openBox.showBox(m_session.openEntry(), isCovered());
}

bool detailViewController::textFieldShouldReturn(TextField &field) {
  if (isFiltered()) {
    segmentedControl->setSelectedSegmentIndex(AllLines);
  }
  if (m_session.curBoxIndex() == -1) {
    lblScanState->drawAttention();
    return false;
  }
  if (&field != txtBarcode) {
    return true;
  }
  const QString code = txtBarcode->text();
  const auto match = m_session.find(code);
  if (!match) {
    noteScan(code, ScanOutcome::Unknown);
    refuseUnknownItem(code);
    return false;
  }
  if (const auto *line = std::get_if<std::size_t>(&*match)) {
    const int row = static_cast<int>(*line);
    displayQuantityViewControllerForIndexPath(row);
    m_isKeypadForScan = true;
    noteScan(code, ScanOutcome::Found, row + 1);
  } else {
    noteScan(code, ScanOutcome::Loose);
    if (const auto *foreign = std::get_if<BoxLine>(&*match)) {
      openKeypadForForeignLine(*foreign);
    } else {
      openKeypadForLoosePick(std::get<LoosePick>(*match));
    }
  }
  txtBarcode->setText(QString());
  return true;
}

void detailViewController::noteScan(const QString &code, ScanOutcome outcome, int line) {
  m_scans.add(
      {.time = environment().clock->timeOfDay(), .code = code, .outcome = outcome, .line = line});
}

TextField *detailViewController::scanField() const {
  return m_session.curBoxIndex() == -1 ? nullptr : txtBarcode;
}

void detailViewController::scanStateTouched() {
  presentViewController(m_scanTrail, PresentationStyle::Popover, lblScanState);
}

void detailViewController::openKeypadForLoosePick(const LoosePick &loose) {
  m_session.addLoosePick(loose);
  tblItems->reloadData();
  // A loose pick has no row: its quantity is booked to the last line of the open box.
  displayQuantityViewControllerForIndexPath(tblItems->numberOfRows() - 1);
}

void detailViewController::openKeypadForForeignLine(const BoxLine &line) {
  m_isKeypadForScan = false;
  tblItems->reloadData();
  openKeypad(line, tblItems->numberOfRows());
  m_foreignLine = line;
}

void detailViewController::refuseUnknownItem(const QString &code) {
  environment().alerts.show(unknownItemMessage(code));
  txtBarcode->setText(QString());
  environment().sounds->playSystemSound(SoundPlayer::kErrorTone);
}

bool detailViewController::isFiltered() const {
  return segmentedControl->selectedSegmentIndex() != AllLines;
}

std::size_t detailViewController::linePosition(int row) const {
  const auto shown = static_cast<std::size_t>(row);
  return isFiltered() ? m_arrayDisplay.at(shown) : shown;
}

int detailViewController::numberOfRowsInSection(const TableView & /*table*/, int /*section*/) {
  if (m_session.curBoxIndex() == -1) {
    return 0;
  }
  m_arrayDisplay.clear();
  if (!isFiltered()) {
    return static_cast<int>(m_session.openBoxLines().size());
  }
  m_arrayDisplay = linesShownBy(segmentedControl->selectedSegmentIndex(), m_session.openBoxLines());
  return static_cast<int>(m_arrayDisplay.size());
}

QVariant detailViewController::cellForRowAtIndexPath(const TableView & /*table*/, int row) {
  if (m_session.curBoxIndex() == -1) {
    return {};
  }
  return QVariant::fromValue(
      pickTableCell::ofLine(m_session.openBoxLines().at(linePosition(row)), row));
}

QVariant detailViewController::viewForHeaderInSection(const TableView & /*table*/,
                                                      int /*section*/) {
  return QVariant::fromValue(pickTableCell::header());
}

void detailViewController::markRow(int row) {
  tblItems->selectRow(row);
  tblItems->paintRow(row);
}

void detailViewController::displayQuantityViewControllerForIndexPath(int row) {
  m_isKeypadForScan = false;
  tblItems->reloadData();
  if (row < 0 || row >= tblItems->rowCount()) {
    environment().sounds->playSystemSound(SoundPlayer::kErrorTone);
    return;
  }
  markRow(row);
  openKeypad(m_session.openBoxLines().at(linePosition(row)), row);
}

void detailViewController::openKeypad(const BoxLine &line, int row) {
  m_foreignLine.reset();
  auto *keypad = qobject_cast<changeQuantityViewController *>(
      environment().storyboard.instantiateViewController(
          QStringLiteral("changeQuantityViewController"), environment(), this));
  presentViewController(keypad, PresentationStyle::FormSheet);
  keypad->setDisplayValues(line.item, line.barcode, line.descr, line.pickqty.text(),
                           line.orderqty.text());
  keypad->setDelegate(this);
  keypad->setRow(row);
}

void detailViewController::CloseViewControllerWithGetQtyAtRow(std::int32_t row,
                                                              std::int32_t currentQty,
                                                              std::int32_t addQty) {
  const auto foreign = std::exchange(m_foreignLine, std::nullopt);
  const bool isBooked =
      foreign ? m_session.bookForeignLine(*foreign, wrappingAdd(currentQty, addQty))
              : m_session.bookQuantity(linePosition(row), isFiltered(), currentQty, addQty);
  tblItems->reloadData();
  if (!m_arrayDisplay.empty()) {
    markRow(row);
  }
  m_openBox.showPicked(m_session.openEntry());
  if (m_delegate) {
    m_delegate->QuantityChangedOnDetailView();
  }
  if (std::exchange(m_isKeypadForScan, false) && isBooked) {
    m_scans.bookLatestFound();
  }
  txtBarcode->becomeFirstResponder();
}

void detailViewController::showSaved(const BoxLine &line, const QString &box) {
  const QTime time = environment().clock->timeOfDay();
  lblSaved->setText(
      QStringLiteral("Saved %1 × %2 in box %3, %4")
          .arg(line.pickqty.text(), line.item, box, time.toString(QStringLiteral("HH:mm:ss"))));
}

void detailViewController::showNotSaved(const BoxLine &line, const QString &box,
                                        const QString &reason) {
  lblSaved->setText(QString());
  environment().alerts.show(quantityNotSavedMessage(line, box, reason));
}

void detailViewController::btnOptionsTouched() {
  txtBarcode->resignFirstResponder();
  presentViewController(m_actionPicker, PresentationStyle::Popover, btnOptions);
}

void detailViewController::selectedAction(const QString &title) {
  if (title == kCompleteAndSend) {
    environment().alerts.show(
        pickingCompletedQuestion(m_session.pickList(), environment().rules, this));
  } else if (title == kSendEmail) {
    exportPicking(environment(), *managedObjectContext(), deliveryNumberOf(m_session.pickList()),
                  this);
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
  m_sender->send(deliveryNumberOf(m_session.pickList()));
}

void detailViewController::showDeliveryDetailsViewController() {
  m_deliveryDetailsVC = showSummary(*this, environment(), m_deliveryDetailsVC,
                                    arrayItems() ? arrayItems() : std::make_shared<ItemLines>());
}
