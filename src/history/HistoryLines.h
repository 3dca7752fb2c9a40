#pragma once

#include "delivery/PickRecords.h"
#include "store/Picking.h"

#include <vector>

/// The stored rows of one delivery merged into one line an item, for its summary. The first row of
/// an item makes the line. Kept on purpose: the picked quantity of every later row of the item is
/// added to the line's ordered quantity, its own picked quantity stays the first row's.
ItemLines historyLines(const std::vector<Picking> &rows);
