#pragma once

#include "delivery/PickRecords.h"
#include "store/Picking.h"

#include <vector>

/// Merges the stored rows of a delivery into one line per item, for its summary. The first row of
/// an item gives the line; a further row adds its picked quantity to the line's ordered quantity.
ItemLines historyLines(const std::vector<Picking> &rows);
