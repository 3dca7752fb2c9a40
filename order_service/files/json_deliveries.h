#pragma once

#include "model/deliveries.h"

#include <string_view>

namespace cartonpick::orders {

/// Reads deliveries from JSON: an array of order lines, or an object of such an array
/// ("deliveries") and an array of articles ("articles"). Throws InputError that gives the number of
/// the element at fault.
Deliveries deliveriesFromJson(std::string_view text);

}  // namespace cartonpick::orders
