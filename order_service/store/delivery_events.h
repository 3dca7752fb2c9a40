#pragma once

#include "model/pick_report.h"
#include "store/sql_address.h"

#include <soci/soci.h>
#include <string>
#include <vector>

namespace cartonpick::orders {

/// Inserts reports and reopenings of deliveries, numbered in the order of commit, with prepared
/// statements of one session. To be called in a transaction. Throws soci::soci_error.
class DeliveryEvents {
 public:
  DeliveryEvents(soci::session &session, SqlDialect dialect);
  DeliveryEvents(const DeliveryEvents &) = delete;
  DeliveryEvents &operator=(const DeliveryEvents &) = delete;

  /// Inserts those of the lines, which are of one delivery, that are not stored yet or are undone.
  void insert(const std::vector<PickReport> &lines);

  /// Undoes all reports of the delivery. Returns false if there is none.
  bool reopen(const std::string &delivery);

 private:
  void begin(const std::string &delivery);

  soci::session &m_session;
  PickReport m_picked;
  std::string m_time;
  long long m_number = 0;
  soci::statement m_touchDelivery;
  soci::statement m_insertPicked;
};

}  // namespace cartonpick::orders
