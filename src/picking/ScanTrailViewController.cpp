#include "picking/ScanTrailViewController.h"

#include "picking/ScanTrailCell.h"

namespace {

void showOutcome(ScanTrailCell &cell, const Scan &scan) {
  switch (scan.outcome) {
    case ScanOutcome::Found:
      cell.outcome = {QStringLiteral("Line %1, not booked").arg(scan.line), Colour::yellow};
      cell.icon = QStringLiteral("unopened");
      break;
    case ScanOutcome::Booked:
      cell.outcome = {QStringLiteral("Booked to line %1").arg(scan.line), Colour::green};
      cell.icon = QStringLiteral("completed");
      break;
    case ScanOutcome::Loose:
      cell.outcome = {QStringLiteral("Loose"), Colour::blue};
      cell.icon = QStringLiteral("loose");
      break;
    case ScanOutcome::Unknown:
      cell.outcome = {QStringLiteral("Unknown"), Colour::red};
      cell.icon = QStringLiteral("unknown");
      break;
    case ScanOutcome::Refused:
      cell.outcome = {QStringLiteral("Refused"), Colour::red};
      cell.icon = QStringLiteral("refused");
      break;
  }
}

}  // namespace

ScanTrailViewController::ScanTrailViewController(const ScanTrail &scans, Environment &environment,
                                                 QObject *parent)
    : ViewController(QStringLiteral("ScanTrailViewController"), environment, parent),
      m_trail(scans) {
  tblScans->setDataSource(this);
  tblScans->setAllowsSelection(false);
  setPreferredContentSize({620, 460});
  connect(&scans, &ScanTrail::changed, tblScans, &TableView::reloadData);
}

int ScanTrailViewController::numberOfRowsInSection(const TableView & /*table*/, int /*section*/) {
  return static_cast<int>(m_trail.scans().size());
}

QVariant ScanTrailViewController::cellForRowAtIndexPath(const TableView & /*table*/, int row) {
  const Scan &scan = m_trail.scans().at(static_cast<std::size_t>(row));
  ScanTrailCell cell;
  cell.time.text = scan.time.toString(QStringLiteral("HH:mm:ss"));
  cell.code.text = scan.code;
  showOutcome(cell, scan);
  return QVariant::fromValue(cell);
}
