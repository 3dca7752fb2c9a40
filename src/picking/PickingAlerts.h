#pragma once

#include "delivery/PickRecords.h"
#include "delivery/PickingRules.h"
#include "view/AlertStack.h"

#include <functional>

class QString;

/// The alerts of the two panes of a picking.

/// Asks whether to leave the picking, and calls `leave` after OK.
AlertView closePickingQuestion(const std::function<void()> &leave);

/// The tag of the question whether the picking is completed.
constexpr int kPickingCompletedTag = 199;

/// Asks whether the picking of `list` is completed. `delegate` gets the answer.
AlertView pickingCompletedQuestion(const PickList &list, const PickingRules &rules,
                                   const WeakDelegate<AlertViewDelegate> &delegate);

/// Says that no line and no article has the scanned `code`.
AlertView unknownItemMessage(const QString &code);

/// Asks whether the quantity `total` is meant, which is more than `ordered`, and calls `book` after
/// YES.
AlertView moreThanOrderedQuestion(std::int32_t total, std::int32_t ordered,
                                  const std::function<void()> &book);

/// Says that the quantity of `line` in the box `box` is not saved, and the `reason`.
AlertView quantityNotSavedMessage(const BoxLine &line, const QString &box, const QString &reason);

/// Says that the downloaded catalogue is not stored, and the `reason`.
AlertView itemsNotStoredMessage(const QString &reason);

/// Says whether the catalogue is loaded. `delegate` is told if it is not.
AlertView itemsReloadedMessage(bool isLoaded, const WeakDelegate<AlertViewDelegate> &delegate);
