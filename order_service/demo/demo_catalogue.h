#pragma once

#include "model/order_line.h"

#include <string>
#include <vector>

namespace cartonpick::orders {

/// An article of the demo wholesaler, with the brand that it is sold under.
struct DemoArticle {
  Article article;
  std::string brand;
};

/// The demo wholesaler's articles: every ware in every variant, then some of which only one kind is
/// kept. Always the same, in the same order.
std::vector<DemoArticle> demoCatalogue();

}  // namespace cartonpick::orders
