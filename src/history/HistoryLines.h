#pragma once

#include "delivery/PickRecords.h"
#include "store/Picking.h"

#include <vector>

/// The stored rows of one delivery merged into one line an item, for its summary. The first row of
/// an item makes the line; PickingRules::addLaterRow says what the later rows change.
ItemLines historyLines(const std::vector<Picking> &rows);
