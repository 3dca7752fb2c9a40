#pragma once

#include "http/http_message.h"
#include "store/delivery_summary.h"

#include <string>
#include <vector>

namespace cartonpick::orders {

/// The page of all deliveries or of those that a search found, with a button to log out if there is
/// a login.
Answer deliveryListPage(const std::vector<DeliverySummary> &deliveries, const std::string &search,
                        bool hasLogin);

}  // namespace cartonpick::orders
