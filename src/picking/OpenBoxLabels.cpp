#include "picking/OpenBoxLabels.h"

#include "base/Int32.h"
#include "view/outlets/Label.h"

void OpenBoxLabels::showBox(const PickEntry *entry, bool isPaneCovered) const {
  const bool isOpen = entry != nullptr;
  name.setText(isOpen ? boxOf(*entry) : QStringLiteral("-"));
  scanState.setText(isPaneCovered ? QStringLiteral("Close this first")
                    : isOpen      ? QStringLiteral("Ready to scan")
                                  : QStringLiteral("Open a box first"));
  scanState.setTextColor(isOpen && !isPaneCovered ? Colour::green : Colour::grey);
}

void OpenBoxLabels::showOrdered(const PickEntry *entry) const {
  if (entry != nullptr) {
    ordered.setText(QString::number(boxorderqtyOf(*entry)));
  }
}

void OpenBoxLabels::showPicked(const PickEntry *entry) const {
  if (entry == nullptr) {
    return;
  }
  const std::int32_t pick = boxpickqtyOf(*entry);
  picked.setText(QString::number(pick));
  difference.setText(QString::number(wrappingSubtract(pick, boxorderqtyOf(*entry))));
}

void OpenBoxLabels::clearTotals() const {
  for (Label *total : {&picked, &ordered, &difference}) {
    total->setText(QStringLiteral("-"));
  }
}
