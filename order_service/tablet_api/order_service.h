#pragma once

#include "http/http_message.h"
#include "store/order_store.h"

#include <string_view>

namespace cartonpick::orders {

/// The picking web service, apart from its transport. May be called from several threads at once.
class OrderService {
 public:
  /// What the paths of all calls begin with.
  static constexpr std::string_view kPrefix = "/qir_pick/servicepick.svc/json/";

  /// The store must outlive the service.
  explicit OrderService(OrderStore &store) : m_store(store) {}

  /// Throws what the store throws.
  Answer answer(const Request &request) const;

 private:
  Answer orderPerCarton(std::string_view encodedNumber) const;
  Answer items() const;
  Answer sendPick(const Request &request) const;

  OrderStore &m_store;
};

}  // namespace cartonpick::orders
