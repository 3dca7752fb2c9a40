#pragma once

#include "store/sql_store.h"

#include <ostream>
#include <vector>

namespace cartonpick::orders {

/// Writes lines as CSV (RFC 4180) with a header line: the members of a sent line, and "received",
/// the UTC time at which the service had it.
void writeCsv(const std::vector<StoredLine> &lines, std::ostream &out);

/// Writes lines as a JSON array of objects with the same members.
void writeJson(const std::vector<StoredLine> &lines, std::ostream &out);

}  // namespace cartonpick::orders
