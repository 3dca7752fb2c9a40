#pragma once

#include "model/pick_report.h"

#include <string_view>
#include <vector>

namespace cartonpick::orders {

/// Reads the body that reports a picking: at least one line, all of the same delivery. Throws
/// InputError that says what is wrong and in which line, counted from 1.
std::vector<PickReport> readPickingBody(std::string_view body);

}  // namespace cartonpick::orders
