#pragma once

#include "model/deliveries.h"
#include "model/received_report.h"
#include "store/delivery_summary.h"
#include "store/order_store.h"
#include "store/sql_address.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace cartonpick::orders {

class SqlConnection;

/// A store in an SQLite file, or in PostgreSQL. Any number of processes may share one. A connection
/// that was lost is made anew. Everything throws std::runtime_error when the store can't be used.
class SqlStore : public OrderStore {
 public:
  /// Opens the store, making what it lacks. The error's text names it, without its password.
  explicit SqlStore(const SqlAddress &address);
  ~SqlStore() override;

  Delivery delivery(const std::string &number) const override;
  std::vector<Article> catalogue() const override;
  void store(const std::vector<PickReport> &lines) override;

  /// Adds the deliveries, or replaces those that are there already, and the articles that are new.
  /// All or nothing.
  void load(const Deliveries &deliveries);
  /// The same, and nothing else stays to be picked.
  void replace(const Deliveries &deliveries);
  /// The received reports by delivery, order, box, item and time.
  std::vector<ReceivedReport> picked(const ReportFilter &filter) const;
  /// Summaries of deliveries, the latest change first; see selectSummaries.
  std::vector<DeliverySummary> summaries(const std::string &search) const;

 private:
  class Lease;

  template <class Work>
  auto with(const Work &work) const;
  void loadInto(SqlConnection &connection, const Deliveries &deliveries) const;

  SqlAddress m_address;
  std::size_t m_maxConnections;
  mutable std::mutex m_mutex;
  mutable std::condition_variable m_isIdle;
  mutable std::size_t m_connections = 0;
  mutable std::vector<std::unique_ptr<SqlConnection>> m_idle;
  /// SQLite has one writer at a time, and lets others wait by asking again and again.
  mutable std::mutex m_writing;
};

}  // namespace cartonpick::orders
