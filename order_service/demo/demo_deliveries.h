#pragma once

#include "model/deliveries.h"

namespace cartonpick::orders {

/// The deliveries that the service has without a file, to learn on and to try things out. Always
/// the same. The folder's README lists them.
Deliveries demoDeliveries();

}  // namespace cartonpick::orders
