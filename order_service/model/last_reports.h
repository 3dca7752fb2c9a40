#pragma once

#include "model/received_report.h"

#include <vector>

namespace cartonpick::orders {

/// Returns, of every order, box, item and barcode of a delivery, the report that was received last
/// and is not undone,/// in the order of the first ones: what is picked now.
std::vector<ReceivedReport> lastReports(const std::vector<ReceivedReport> &reports);

}  // namespace cartonpick::orders
