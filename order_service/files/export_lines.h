#pragma once

#include "model/received_report.h"

#include <ostream>
#include <vector>

namespace cartonpick::orders {

/// Writes reports as CSV (RFC 4180) with a header line: the members of a sent line, and "received",
/// the UTC time at which the service had it.
void writeCsv(const std::vector<ReceivedReport> &reports, std::ostream &out);

/// Writes reports as a JSON array of objects with the same members.
void writeJson(const std::vector<ReceivedReport> &reports, std::ostream &out);

}  // namespace cartonpick::orders
