#include "summary/deliveryDetailsViewController.h"

#include "base/Int32.h"
#include "delivery/PickFilter.h"
#include "summary/pickTableCell.h"

namespace {

/// Unlike in the pick table, a line with nothing picked is not a different line.
bool isShown(int segment, const BoxLine &line) {
  const std::int32_t pick = line.pickqty.value();
  const std::int32_t order = line.orderqty.value();
  switch (segment) {
    case AllLines:
      return true;
    case NotPickedLines:
      return pick == 0;
    case DifferentLines:
      return pick != 0 && pick != order;
    default:
      return pick == order;
  }
}

}  // namespace

deliveryDetailsViewController::deliveryDetailsViewController(Environment &environment,
                                                             QObject *parent)
    : ViewController(QStringLiteral("deliveryDetailsViewController"), environment, parent) {
  segmentedControlStatus->setTitles(kPickFilterTitles);
  tblPicking->setAllowsSelection(false);
}

void deliveryDetailsViewController::viewDidLoad() {
  tblPicking->setDataSource(this);
  connect(segmentedControlStatus, &SegmentedControl::valueChanged, this,
          &deliveryDetailsViewController::segmentedControlStatusValueChanged);
}

void deliveryDetailsViewController::viewWillAppear() {
  segmentedControlStatus->setSelectedSegmentIndex(AllLines);
  segmentedControlStatusValueChanged();
  tblPicking->scrollToTop();
  const QString doc = m_arrayItems->empty() ? QString() : m_arrayItems->front().doc;
  lblDelivery->setText(QStringLiteral("Summary for Delivery: ") + doc);
  lblDelivery->setTextColor(Colour::red);
  showTotals();
}

void deliveryDetailsViewController::showTotals() {
  std::int32_t picked = 0;
  std::int32_t ordered = 0;
  std::int32_t difference = 0;
  for (const BoxLine &line : *m_arrayItems) {
    picked = wrappingAdd(picked, line.pickqty.value());
    ordered = wrappingAdd(ordered, line.orderqty.value());
    difference =
        wrappingAdd(difference, wrappingSubtract(line.pickqty.value(), line.orderqty.value()));
  }
  txtQtyPicked->setText(QString::number(picked));
  txtQtyOrder->setText(QString::number(ordered));
  txtQtyDiff->setText(QString::number(difference));
}

void deliveryDetailsViewController::segmentedControlStatusValueChanged() {
  m_displayItems.clear();
  for (std::size_t i = 0; i < m_arrayItems->size(); ++i) {
    if (isShown(segmentedControlStatus->selectedSegmentIndex(), m_arrayItems->at(i))) {
      m_displayItems.push_back(i);
    }
  }
  tblPicking->reloadData();
}

void deliveryDetailsViewController::btnCloseTouched() {
  removeFromSuperview(Flip::FromRight);
}

int deliveryDetailsViewController::numberOfRowsInSection(const TableView & /*table*/, int section) {
  return section == 0 ? static_cast<int>(m_displayItems.size()) : 0;
}

QVariant deliveryDetailsViewController::cellForRowAtIndexPath(const TableView & /*table*/,
                                                              int row) {
  const std::size_t line = m_displayItems.at(static_cast<std::size_t>(row));
  return QVariant::fromValue(pickTableCell::ofLine(m_arrayItems->at(line), row));
}

QVariant deliveryDetailsViewController::viewForHeaderInSection(const TableView & /*table*/,
                                                               int /*section*/) {
  return QVariant::fromValue(pickTableCell::header());
}

double deliveryDetailsViewController::heightForRowAtIndexPath(const TableView & /*table*/,
                                                              int /*row*/) {
  return pickTableCell::kHeight;
}

double deliveryDetailsViewController::heightForHeaderInSection(const TableView & /*table*/,
                                                               int /*section*/) {
  return pickTableCell::kHeight;
}

void deliveryDetailsViewController::didSelectRowAtIndexPath(TableView & /*table*/, int /*row*/) {}
