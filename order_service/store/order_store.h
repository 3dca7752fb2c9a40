#pragma once

#include "model/order_line.h"
#include "model/pick_report.h"

#include <string>
#include <vector>

namespace cartonpick::orders {

/// One delivery to pick.
struct Delivery {
  /// In the given order; none for an unknown delivery.
  std::vector<OrderLine> lines;
  /// True if a report of these lines is stored.
  bool isSent = false;
};

/// The store of the deliveries and of the reports. Implementations may be called from several
/// threads at once, and throw StoreError (see store_error.h).
class OrderStore {
 public:
  OrderStore() = default;
  OrderStore(const OrderStore &) = delete;
  OrderStore &operator=(const OrderStore &) = delete;
  virtual ~OrderStore() = default;

  /// Returns the delivery with the number, which must be storable (see isStorable). Numbers are
  /// compared byte by byte.
  virtual Delivery delivery(const std::string &number) const = 0;

  /// Returns the articles of all deliveries and the other articles that were loaded.
  virtual std::vector<Article> catalogue() const = 0;

  /// Stores all of the lines, which are of one delivery, or none. Lines that are already stored
  /// change nothing. Returns when they are on disk, as far as the implementation has one.
  virtual void store(const std::vector<PickReport> &lines) = 0;
};

}  // namespace cartonpick::orders
