#pragma once

#include "model/deliveries.h"
#include "model/received_report.h"
#include "store/connection_pool.h"
#include "store/delivery_summary.h"
#include "store/order_store.h"
#include "store/sql_address.h"
#include "store/store_limits.h"

#include <mutex>
#include <string>
#include <vector>

namespace cartonpick::orders {

/// A store in an SQLite file, or in PostgreSQL. Any number of processes may share one. A connection
/// that was lost is made again. Everything throws StoreError (see store_error.h).
class SqlStore : public OrderStore {
 public:
  /// Opens the store, making what it lacks. Throws std::runtime_error also for a file that is not
  /// taken, see claimStoreFile.
  explicit SqlStore(const SqlAddress &address, const StoreLimits &limits = {});
  ~SqlStore() override;

  Delivery delivery(const std::string &number) const override;
  std::vector<Article> catalogue() const override;
  void store(const std::vector<PickReport> &lines) override;

  /// How the connections of a kind of calls are used.
  PoolUse useOf(StoreUse use) const { return m_pool.useOf(use); }

  /// Makes a change and takes it back. Throws StoreUnavailable if the store takes no changes now.
  void probe() const;

  /// Adds the deliveries, or replaces those that are there already, and the articles that are new.
  /// All or nothing.
  void load(const Deliveries &deliveries);
  /// The same, and nothing else stays to be picked.
  void replace(const Deliveries &deliveries);
  /// The received reports by delivery, order, box, item and time.
  std::vector<ReceivedReport> picked(const ReportFilter &filter) const;
  /// Undoes all reports of the delivery, so that it can be picked again; they are kept. Returns
  /// false if it has not been sent.
  bool reopen(const std::string &delivery);
  /// When the delivery was reopened (UTC), the first time first.
  std::vector<std::string> reopenings(const std::string &delivery) const;
  /// Item and barcode of the articles that were reported of the delivery, but are not in the
  /// catalogue.
  std::vector<Article> unknownArticles(const std::string &delivery) const;
  /// Writes the search texts that are missing or outdated, see delivery_search.h; summaries() does
  /// so before a search. Takes some time after an upgrade.
  void updateSearch() const;
  /// Summaries of deliveries, the latest change first; see selectSummaries.
  std::vector<DeliverySummary> summaries(const std::string &search) const;

 private:
  std::unique_lock<std::timed_mutex> turnToWrite() const;

  mutable ConnectionPool m_pool;
  /// SQLite has one writer at a time, and lets others wait by asking again and again.
  mutable std::timed_mutex m_writing;
};

}  // namespace cartonpick::orders
