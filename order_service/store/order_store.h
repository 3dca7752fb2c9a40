#pragma once

#include "model/order_line.h"
#include "model/pick_report.h"

#include <string>
#include <vector>

namespace cartonpick::orders {

/// One delivery to pick.
struct Delivery {
  /// In their given order; none when there is no such delivery.
  std::vector<OrderLine> lines;
  /// Whether anything that was picked of these lines was stored.
  bool isSent = false;
};

/// Where the deliveries to pick come from and what was picked of them goes. Implementations may be
/// called from several threads at once, and throw StoreError (see store_error.h).
class OrderStore {
 public:
  OrderStore() = default;
  OrderStore(const OrderStore &) = delete;
  OrderStore &operator=(const OrderStore &) = delete;
  virtual ~OrderStore() = default;

  /// The number, which must be storable (see isStorable), is compared byte by byte.
  virtual Delivery delivery(const std::string &number) const = 0;

  /// The articles of all deliveries, and those that were given besides.
  virtual std::vector<Article> catalogue() const = 0;

  /// Stores all of the lines, which are of one delivery, or none; lines that are stored already
  /// change nothing. Returns only once they would survive a power cut, as far as the
  /// implementation can.
  virtual void store(const std::vector<PickReport> &lines) = 0;
};

}  // namespace cartonpick::orders
