#pragma once

#include "model/pick_report.h"
#include "store/order_store.h"
#include "store/sql_address.h"

#include <memory>
#include <soci/soci.h>
#include <string>
#include <vector>

namespace cartonpick::orders {

/// One connection with its prepared statements. Everything throws soci::soci_error.
class SqlConnection {
 public:
  explicit SqlConnection(const SqlAddress &address);
  ~SqlConnection();
  SqlConnection(const SqlConnection &) = delete;
  SqlConnection &operator=(const SqlConnection &) = delete;

  bool isAlive() const { return m_session.is_connected(); }
  soci::session &session() { return m_session; }

  Delivery delivery(const std::string &number);
  /// Inserts what is not there yet; to be called in a transaction.
  void insert(const std::vector<PickReport> &lines, const std::string &receivedAt);

 private:
  struct Statements;

  /// Prepared at their first use.
  Statements &statements();

  soci::session m_session;
  std::unique_ptr<Statements> m_statements;
};

}  // namespace cartonpick::orders
