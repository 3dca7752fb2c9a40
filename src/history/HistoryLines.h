#pragma once

#include "delivery/PickRecords.h"
#include "delivery/PickingRules.h"
#include "store/Picking.h"

#include <vector>

/// Merges the stored rows of a delivery into one line per item, for its summary. The first row of
/// an item gives the line. A further row adds its picked quantity to the line's ordered quantity;
/// or both quantities to those of the line, if `rules` sum items over boxes.
ItemLines historyLines(const std::vector<Picking> &rows, const PickingRules &rules = {});
