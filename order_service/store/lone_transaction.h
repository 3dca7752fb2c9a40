#pragma once

#include "store/sql_address.h"

#include <soci/soci.h>

namespace cartonpick::orders {

/// A transaction beside which no other process changes the schema. Rolled back unless committed.
class LoneTransaction {
 public:
  LoneTransaction(soci::session &session, SqlDialect dialect);
  ~LoneTransaction();
  LoneTransaction(const LoneTransaction &) = delete;
  LoneTransaction &operator=(const LoneTransaction &) = delete;

  void commit();

 private:
  soci::session &m_session;
  bool m_isDone = false;
};

}  // namespace cartonpick::orders
