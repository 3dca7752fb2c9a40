#pragma once

#include "model/order_line.h"

#include <string>
#include <vector>

namespace cartonpick::orders {

/// What a delivery's lines have in common: a definition list's terms, in HTML.
std::string orderHeads(const std::vector<OrderLine> &lines);

}  // namespace cartonpick::orders
