#pragma once

#include "model/deliveries.h"

#include <string_view>

namespace cartonpick::orders {

/// Reads deliveries from CSV in UTF-8: a header line that names the members of an order line, in
/// any order, and one record an order line. Throws InputError that gives the line at fault.
Deliveries deliveriesFromCsv(std::string_view text);

}  // namespace cartonpick::orders
