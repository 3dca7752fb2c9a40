#pragma once

#include "http/http_message.h"
#include "model/order_line.h"
#include "model/picked_delivery.h"

#include <string>
#include <vector>

namespace cartonpick::orders {

/// A delivery for paper: what to pick, with barcodes of the delivery, the boxes and the articles.
Answer deliverySheet(const std::string &number, const std::vector<OrderLine> &lines,
                     const PickedDelivery &delivery);

}  // namespace cartonpick::orders
