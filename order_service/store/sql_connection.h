#pragma once

#include "model/pick_report.h"
#include "store/delivery_events.h"
#include "store/order_store.h"
#include "store/sql_address.h"
#include "store/store_limits.h"

#include <memory>
#include <soci/soci.h>
#include <string>
#include <vector>

namespace cartonpick::orders {

class PostgresSocket;

/// One connection with its prepared statements. Everything throws soci::soci_error.
class SqlConnection {
 public:
  explicit SqlConnection(const SqlAddress &address, const StoreLimits &limits = {});
  ~SqlConnection();
  SqlConnection(const SqlConnection &) = delete;
  SqlConnection &operator=(const SqlConnection &) = delete;

  bool isAlive() const { return m_session.is_connected(); }
  soci::session &session() { return m_session; }

  /// Has the statement under way fail, from another thread. PostgreSQL's connection is lost then.
  void interrupt() noexcept;
  /// Lets the statements of the current transaction take their time. SQLite has no limit to lift.
  void liftLimits();

  Delivery delivery(const std::string &number);
  DeliveryEvents &events();

 private:
  struct Lookup;

  SqlDialect m_dialect;
  soci::session m_session;
  // Prepared at their first use.
  std::unique_ptr<Lookup> m_lookup;
  std::unique_ptr<DeliveryEvents> m_events;
  /// Null for SQLite. The last member: what the others send at their end need not arrive.
  std::unique_ptr<PostgresSocket> m_socket;
};

}  // namespace cartonpick::orders
