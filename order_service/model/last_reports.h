#pragma once

#include "store/sql_store.h"

#include <vector>

namespace cartonpick::orders {

/// Of every order, box, item and barcode of a delivery the line that was received last, in the
/// order of the first ones: what is picked now.
std::vector<StoredLine> lastReports(const std::vector<StoredLine> &lines);

}  // namespace cartonpick::orders
