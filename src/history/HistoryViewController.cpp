#include "history/HistoryViewController.h"

#include "history/HistoryLines.h"
#include "history/PickHistoryCell.h"
#include "summary/SummaryOverlay.h"
#include "view/Environment.h"

#include <algorithm>

namespace {

constexpr QRectF kSummaryFrame{310, 17, 675, 600};

}  // namespace

HistoryViewController::HistoryViewController(Environment &environment, QObject *parent)
    : ViewController(QStringLiteral("HistoryViewController"), environment, parent) {
  tblHistoryOverview->setDataSource(this);
}

void HistoryViewController::viewDidLoad() {
  m_arrayDeliveries =
      managedObjectContext()->deliveryPickTimes().value_or(std::vector<DeliveryPickTimes>());
  std::stable_sort(m_arrayDeliveries.begin(), m_arrayDeliveries.end(),
                   [](const DeliveryPickTimes &a, const DeliveryPickTimes &b) {
                     return a.times.maxdatepicked < b.times.maxdatepicked;
                   });
  tblHistoryOverview->reloadData();
}

void HistoryViewController::prepareForSegue(Segue &segue) {
  auto *holder = dynamic_cast<ManagedObjectContextHolder *>(segue.destination);
  if (segue.identifier == QStringLiteral("returnFromHistoryToStart") && holder != nullptr) {
    holder->setManagedObjectContext(managedObjectContext());
  }
}

int HistoryViewController::numberOfRowsInSection(const TableView & /*table*/, int section) {
  return section == 0 ? static_cast<int>(m_arrayDeliveries.size()) : 0;
}

QVariant HistoryViewController::cellForRowAtIndexPath(const TableView & /*table*/, int row) {
  const DeliveryPickTimes &delivery = m_arrayDeliveries.at(static_cast<std::size_t>(row));
  const QTimeZone zone = environment().clock->localZone();
  const QString format = QStringLiteral("dd/MM/yyyy HH:mm");
  PickHistoryCell cell;
  cell.deliveryNo.text = delivery.doc;
  cell.dateCreated.text = delivery.times.mindatepicked.toTimeZone(zone).toString(format);
  cell.dateClosed.text = delivery.times.maxdatepicked.toTimeZone(zone).toString(format);
  cell.sent.text = delivery.sent != 0 ? QStringLiteral("Yes") : QStringLiteral("No");
  cell.backgroundColor = row % 2 == 0 ? Colour::lightGrey : Colour::clear;
  return QVariant::fromValue(cell);
}

QVariant HistoryViewController::viewForHeaderInSection(const TableView & /*table*/,
                                                       int /*section*/) {
  PickHistoryCell cell;
  cell.deliveryNo.text = QStringLiteral("Delivery Number");
  cell.sent.text = QStringLiteral("Synchronized");
  cell.dateCreated.text = QStringLiteral("Start Date");
  cell.dateClosed.text = QStringLiteral("End Date");
  cell.backgroundColor = Colour::grey;
  return QVariant::fromValue(cell);
}

double HistoryViewController::heightForRowAtIndexPath(const TableView & /*table*/, int /*row*/) {
  return PickHistoryCell::kHeight;
}

double HistoryViewController::heightForHeaderInSection(const TableView & /*table*/,
                                                       int /*section*/) {
  return PickHistoryCell::kHeight;
}

void HistoryViewController::didSelectRowAtIndexPath(TableView &table, int row) {
  if (table.tag() != 0) {
    return;
  }
  const auto rows =
      managedObjectContext()->pickings(m_arrayDeliveries.at(static_cast<std::size_t>(row)).doc);
  if (!rows) {
    return;
  }
  m_deliveryDetailsVC = showSummary(
      *this, environment(), m_deliveryDetailsVC,
      std::make_shared<const ItemLines>(historyLines(*rows, environment().rules)), kSummaryFrame);
}
