#include "gallery/GalleryViewController.h"

#include "delivery/PickRecords.h"
#include "picking/ScanTrailViewController.h"
#include "picking/boxTableViewCell.h"
#include "summary/pickTableCell.h"
#include "view/Environment.h"

#include <array>
#include <chrono>

namespace {

using namespace std::chrono_literals;

const std::array kBoxes{
    BoxRecord{.box = QStringLiteral("C001"), .boxorderqty = 20},
    BoxRecord{.box = QStringLiteral("C002"), .boxorderqty = 30, .boxpickqty = 30},
    BoxRecord{.box = QStringLiteral("C003"), .boxorderqty = 20, .boxpickqty = 6}};

const std::array kLines{
    BoxLine{.barcode = QStringLiteral("5012345678900"),
            .descr = QStringLiteral("WHITE HANGING HEART T-LIGHT HOLDER"),
            .item = QStringLiteral("85123A"),
            .orderqty = 6,
            .pickqty = 6},
    BoxLine{.barcode = QStringLiteral("5012345678917"),
            .descr = QStringLiteral("METAL LANTERN"),
            .item = QStringLiteral("71053"),
            .orderqty = 6,
            .pickqty = 2},
    BoxLine{.barcode = QStringLiteral("5012345678924"),
            .descr = QStringLiteral("A DESCRIPTION OF SIXTY CHARACTERS, WHICH IS THE LONGEST ONE."),
            .item = QStringLiteral("GIFT-0001-VOUCHER"),
            .orderqty = 1000,
            .pickqty = 0}};

const std::array kScans{ScanOutcome::Refused, ScanOutcome::Unknown, ScanOutcome::Loose,
                        ScanOutcome::Booked, ScanOutcome::Found};

}  // namespace

GalleryViewController::GalleryViewController(Environment &environment, QObject *parent)
    : ViewController(QStringLiteral("GalleryViewController"), environment, parent) {
  btnPlain->setTitle(QStringLiteral("Button"));
  btnWarning->setTitle(QStringLiteral("Stop"));
  btnWarning->setTitleColor(Colour::red);
  btnDisabled->setTitle(QStringLiteral("Disabled"));
  btnDisabled->setTitleColor(Colour::grey);
  btnDisabled->setEnabled(false);
  btnDigit->setTitle(QStringLiteral("7"));
  btnDigit->setBorderWidth(1);
  btnNegative->setTitle(QStringLiteral("Minus"));
  btnNegative->setBorderWidth(2);
  txtFilled->setText(QStringLiteral("5012345678900"));
  txtDisabled->setText(QStringLiteral("4711"));
  txtDisabled->setEnabled(false);
  segmFilter->setTitles({QStringLiteral("All"), QStringLiteral("Not picked"),
                         QStringLiteral("Different"), QStringLiteral("Matching")});
  lblReady->setText(QStringLiteral("Ready to scan"));
  lblReady->setTextColor(Colour::green);
  lblNotReady->setText(QStringLiteral("Open a box first"));
  lblNotReady->setTextColor(Colour::grey);
  lblSaved->setText(QStringLiteral("Saved 6 × 85123A in box C003, 10:12:05"));
  lblBox->setText(QStringLiteral("C003"));
  lblPicked->setText(QStringLiteral("12"));
  lblOrdered->setText(QStringLiteral("20"));
  lblDifference->setText(QStringLiteral("-8"));
  for (TableView *table : {tblBoxes, tblPicks}) {
    table->setDataSource(this);
  }
}

void GalleryViewController::viewDidLoad() {
  tblBoxes->reloadData();
  tblBoxes->selectRow(2);
  tblPicks->reloadData();
  int line = 0;
  for (const ScanOutcome outcome : kScans) {
    m_scans.add({.time = environment().clock->timeOfDay(),
                 .code = QStringLiteral("5012345678900"),
                 .outcome = outcome,
                 .line = ++line});
  }
  connect(&m_work, &QTimer::timeout, this, &GalleryViewController::makeProgress);
}

void GalleryViewController::showAlert() {
  environment().alerts.show({.title = QStringLiteral("Unknown Item"),
                             .message = QStringLiteral("Item 4000000000000 not found!")});
}

void GalleryViewController::showQuestion() {
  environment().alerts.show({.title = QStringLiteral("Picking Completed?"),
                             .message = QStringLiteral("Are you sure that picking is completed?"),
                             .buttons = {QStringLiteral("NO"), QStringLiteral("YES")}});
}

void GalleryViewController::showSheet() {
  presentViewController(environment().storyboard.instantiateViewController(
                            QStringLiteral("DisplayViewController"), environment(), this),
                        PresentationStyle::FormSheet);
}

void GalleryViewController::showPopover() {
  presentViewController(new ScanTrailViewController(m_scans, environment(), this),
                        PresentationStyle::Popover, lblReady);
}

void GalleryViewController::showProgress() {
  m_percent = 0;
  environment().busy.begin(QStringLiteral("Loading items …"));
  m_work.start(30ms);
}

void GalleryViewController::makeProgress() {
  if (++m_percent > 100) {
    m_work.stop();
    environment().busy.end();
    return;
  }
  environment().busy.setProgress(QStringLiteral("%1 of 100 rows").arg(m_percent),
                                 m_percent / 100.0);
}

int GalleryViewController::numberOfRowsInSection(const TableView &table, int /*section*/) {
  return static_cast<int>(&table == tblBoxes ? kBoxes.size() : kLines.size());
}

QVariant GalleryViewController::cellForRowAtIndexPath(const TableView &table, int row) {
  const auto index = static_cast<std::size_t>(row);
  return &table == tblBoxes ? QVariant::fromValue(boxTableViewCell::ofEntry(kBoxes.at(index), row))
                            : QVariant::fromValue(pickTableCell::ofLine(kLines.at(index), row));
}

QVariant GalleryViewController::viewForHeaderInSection(const TableView &table, int /*section*/) {
  return &table == tblPicks ? QVariant::fromValue(pickTableCell::header()) : QVariant();
}
