#pragma once

#include "http/http_message.h"
#include "model/order_line.h"
#include "model/picked_delivery.h"

#include <string>
#include <vector>

namespace cartonpick::orders {

/// What a delivery's page shows besides its lines.
struct DeliveryNotes {
  std::vector<std::string> reopenings = {};   ///< their times, UTC
  std::vector<Article> unknownArticles = {};  ///< that were reported, but are not in the catalogue
  bool canReopen = false;                     ///< from the page
};

/// The page of one delivery. `lines` are its order lines; without any it was withdrawn.
Answer deliveryPage(const std::string &number, const std::vector<OrderLine> &lines,
                    const PickedDelivery &delivery, const DeliveryNotes &notes);

/// The page that says that there is no such delivery.
Answer unknownDeliveryPage(const std::string &number);

}  // namespace cartonpick::orders
