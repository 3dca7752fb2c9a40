#include "picking/PickingAlerts.h"

#include "delivery/BoxState.h"

#include <QString>

namespace {

/// Names the delivery of `list` and counts the boxes that are not completed.
QString summaryOf(const PickList &list) {
  const BoxCounters counters = countersOf(list);
  return QStringLiteral("Delivery %1. Incomplete boxes: %2, unopened boxes: %3. ")
      .arg(deliveryNumberOf(list))
      .arg(counters.incomplete)
      .arg(counters.unopened);
}

}  // namespace

AlertView closePickingQuestion(const std::function<void()> &leave) {
  return {.title = QStringLiteral("Close Picking"),
          .message = QStringLiteral("Are you sure you want to leave picking?"),
          .buttons = {QStringLiteral("OK"), QStringLiteral("Cancel")},
          .cancelButtonIndex = 1,
          .action = [leave](int buttonIndex) {
            if (buttonIndex == 0) {
              leave();
            }
          }};
}

AlertView pickingCompletedQuestion(const PickList &list, const PickingRules &rules,
                                   const WeakDelegate<AlertViewDelegate> &delegate) {
  const QString summary = rules.namesDeliveryBeforeSend ? summaryOf(list) : QString();
  return {.title = QStringLiteral("Picking Completed?"),
          .message = summary + QStringLiteral("Are you sure that picking is completed?"),
          .buttons = {QStringLiteral("NO"), QStringLiteral("YES")},
          .cancelButtonIndex = 0,
          .tag = kPickingCompletedTag,
          .delegate = delegate};
}

AlertView unknownItemMessage(const QString &code) {
  return {.title = QStringLiteral("Unknown Item"),
          .message = QStringLiteral("Item %1 not found!").arg(code)};
}

AlertView moreThanOrderedQuestion(std::int32_t total, std::int32_t ordered,
                                  const std::function<void()> &book) {
  return {.title = QStringLiteral("%1 of %2 ordered?").arg(total).arg(ordered),
          .message = QStringLiteral("This is more than ordered."),
          .buttons = {QStringLiteral("NO"), QStringLiteral("YES")},
          .cancelButtonIndex = 0,
          .action = [book](int buttonIndex) {
            if (buttonIndex == 1) {
              book();
            }
          }};
}

AlertView quantityNotSavedMessage(const BoxLine &line, const QString &box, const QString &reason) {
  return {.title = QStringLiteral("Quantity not saved"),
          .message = QStringLiteral("%1 × %2 in box %3 is not saved: %4. The line is as it was "
                                    "before. Enter the quantity again.")
                         .arg(line.pickqty.text(), line.item, box, reason)};
}

AlertView itemsNotStoredMessage(const QString &reason) {
  return {
      .title = QStringLiteral("Items not saved"),
      .message =
          QStringLiteral("The items are as they were before: %1. Load them again.").arg(reason)};
}

AlertView itemsReloadedMessage(bool isLoaded, const WeakDelegate<AlertViewDelegate> &delegate) {
  if (isLoaded) {
    return {.title = QStringLiteral("Saved"), .message = QStringLiteral("Items have been loaded")};
  }
  return {.title = QStringLiteral("Could not contact server"),
          .message = QStringLiteral("No connection could be opened to server"),
          .delegate = delegate};
}
