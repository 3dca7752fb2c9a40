#pragma once

#include "delivery/PickRecords.h"
#include "store/Picking.h"

#include <vector>

/// Merges the stored rows of a delivery into one line per item, for its summary. The line is made
/// from the item's first row; `PickingRules::addLaterRow` adds the other rows to it.
ItemLines historyLines(const std::vector<Picking> &rows);
