#include "picking/actionPickerViewController.h"

#include "picking/PickingActions.h"

actionPickerViewController::actionPickerViewController(Environment &environment, QObject *parent)
    : ViewController(QStringLiteral("actionPickerViewController"), environment, parent) {
  tableView->setDataSource(this);
  setActionNames({kViewSummary, kSendEmail, kCompleteAndSend});
  setPreferredContentSize({200, 135});
}

void actionPickerViewController::setActionNames(const QStringList &names) {
  m_actionNames = names;
  tableView->reloadData();
}

int actionPickerViewController::numberOfRowsInSection(const TableView & /*table*/,
                                                      int /*section*/) {
  return static_cast<int>(m_actionNames.size());
}

QVariant actionPickerViewController::cellForRowAtIndexPath(const TableView & /*table*/, int row) {
  return m_actionNames.at(row);
}

void actionPickerViewController::didSelectRowAtIndexPath(TableView & /*table*/, int row) {
  if (m_delegate) {
    m_delegate->selectedAction(m_actionNames.at(row));
  }
  dismissViewController();
}
