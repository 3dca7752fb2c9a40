#pragma once

#include "http_message.h"
#include "order_line.h"
#include "picked_delivery.h"

#include <string>
#include <vector>

namespace cartonpick::orders {

/// The page of one delivery. `lines` are its order lines; without any it was withdrawn.
Answer deliveryPage(const std::string &number, const std::vector<OrderLine> &lines,
                    const PickedDelivery &delivery);

/// The page that says that there is no such delivery.
Answer unknownDeliveryPage(const std::string &number);

}  // namespace cartonpick::orders
