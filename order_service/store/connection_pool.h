#pragma once

#include "model/pool_use.h"
#include "store/call_timer.h"
#include "store/sql_address.h"
#include "store/sql_connection.h"
#include "store/store_limits.h"

#include <array>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <soci/error.h>
#include <vector>

namespace cartonpick::orders {

/// What a call does. Each kind has separate connections.
enum class StoreUse { Read, Write, Probe };

/// The connections to one database, made when they are needed. May be used from several threads at
/// once.
class ConnectionPool {
 public:
  ConnectionPool(SqlAddress address, const StoreLimits &limits);
  ConnectionPool(const ConnectionPool &) = delete;
  ConnectionPool &operator=(const ConnectionPool &) = delete;
  ~ConnectionPool() = default;

  const SqlAddress &address() const { return m_address; }
  const StoreLimits &limits() const { return m_limits; }

  /// How many connections the calls of a kind use, and how long they have waited for them.
  PoolUse useOf(StoreUse use) const;

  /// Returns what `work` returns for a connection. If the connection is lost, or does not accept
  /// changes, the work is repeated with a new one, so it must be idempotent. Throws StoreError.
  template <class Work>
  auto with(StoreUse use, const Work &work) {
    return run(use, &m_timer, work);
  }

  /// The same without a limit to the time.
  template <class Work>
  auto withoutLimit(StoreUse use, const Work &work) {
    return run(use, nullptr, work);
  }

 private:
  struct Pooled {
    std::unique_ptr<SqlConnection> connection;
    unsigned generation = 0;
  };

  /// A connection that no other call uses meanwhile.
  class Lease {
   public:
    Lease(ConnectionPool &pool, StoreUse use, CallTimer *timer);
    ~Lease();
    Lease(const Lease &) = delete;
    Lease &operator=(const Lease &) = delete;

    /// Connects if there is no connection.
    SqlConnection &connection();
    /// Returns true, without the connection, if it is of no more use after the error and a new one
    /// may be.
    bool dropAfter(const soci::soci_error &error);
    [[noreturn]] void fail(const soci::soci_error &error);

   private:
    void drop();

    ConnectionPool &m_pool;
    StoreUse m_use;
    CallTimer::Call m_call;
    Pooled m_pooled;
  };

  template <class Work>
  auto run(StoreUse use, CallTimer *timer, const Work &work) {
    Lease lease(*this, use, timer);
    try {
      try {
        return work(lease.connection());
      } catch (const soci::soci_error &error) {
        if (!lease.dropAfter(error)) {
          throw;
        }
        return work(lease.connection());
      }
    } catch (const soci::soci_error &error) {
      lease.fail(error);
    }
  }

  bool hasRoomFor(StoreUse use) const;
  PoolUse &at(StoreUse use) { return m_uses[static_cast<std::size_t>(use)]; }
  const PoolUse &at(StoreUse use) const { return m_uses[static_cast<std::size_t>(use)]; }

  const SqlAddress m_address;
  const StoreLimits m_limits;
  CallTimer m_timer;
  mutable std::mutex m_mutex;
  std::condition_variable m_isReturned;
  std::array<PoolUse, 3> m_uses;
  std::vector<Pooled> m_idle;
  /// Connections of former generations may be to a server that takes no changes (any more).
  unsigned m_generation = 0;
};

}  // namespace cartonpick::orders
