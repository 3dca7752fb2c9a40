#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace cartonpick::orders {

/// One article of the wholesaler's catalogue.
struct Article {
  std::string barcode;
  std::string item;
  std::string description;

  // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy 14 takes the comparison with 0 for a pointer
  auto operator<=>(const Article &) const = default;
};

/// One order line of one carton of a delivery.
struct OrderLine {
  std::string customer;
  std::string brand;
  std::string orderDate;     ///< MM/dd/yyyy
  std::string shippingDate;  ///< MM/dd/yyyy
  std::string delivery;
  std::string order;
  Article article;
  std::int32_t quantity = 0;  ///< pieces ordered, 0 or more
  std::string carton;

  bool operator==(const OrderLine &) const = default;
};

}  // namespace cartonpick::orders
