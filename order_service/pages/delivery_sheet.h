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

/// The style sheet that has the delivery's number on every page of paper.
Answer deliverySheetStyle(const std::string &number);

}  // namespace cartonpick::orders
