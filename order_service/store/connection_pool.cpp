#include "store/connection_pool.h"

#include "store/sql_failure.h"
#include "store/store_error.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <string_view>
#include <utility>

namespace cartonpick::orders {

namespace {

/// Each connection would have a separate memory.
bool hasOneConnection(const SqlAddress &address) {
  return address.file() == SqlAddress::kInMemory;
}

/// The first line of the database's message, without what SOCI adds.
std::string reasonOf(const soci::soci_error &error) {
  constexpr std::string_view kNoConnection = "Cannot establish connection to the database.\n";
  std::string message = error.get_error_message();
  if (message.starts_with(kNoConnection)) {
    message.erase(0, kNoConnection.size());
  }
  return message.substr(0, message.find('\n'));
}

std::string failureText(const SqlAddress &address, const std::string &reason) {
  return "the store " + address.shown() + " can't be used: " + address.withoutSecrets(reason);
}

}  // namespace

ConnectionPool::ConnectionPool(SqlAddress address, const StoreLimits &limits)
    : m_address(std::move(address)),
      m_limits(limits),
      m_timer(limits.call),
      m_uses{PoolUse{.size = limits.readers}, PoolUse{.size = limits.writers},
             PoolUse{.size = limits.probes}} {}

PoolUse ConnectionPool::useOf(StoreUse use) const {
  const std::lock_guard lock(m_mutex);
  return at(use);
}

bool ConnectionPool::hasRoomFor(StoreUse use) const {
  if (hasOneConnection(m_address)) {
    return std::all_of(m_uses.begin(), m_uses.end(),
                       [](const PoolUse &each) { return each.busy == 0; });
  }
  return at(use).busy < at(use).size;
}

ConnectionPool::Lease::Lease(ConnectionPool &pool, StoreUse use, CallTimer *timer)
    : m_pool(pool), m_use(use), m_call(timer) {
  std::unique_lock lock(pool.m_mutex);
  PoolUse &own = pool.at(use);
  const auto begin = std::chrono::steady_clock::now();
  ++own.waiting;
  const bool hasRoom = pool.m_isReturned.wait_for(lock, pool.m_limits.connection,
                                                  [&] { return pool.hasRoomFor(use); });
  --own.waiting;
  own.waits.add(std::chrono::steady_clock::now() - begin);
  if (!hasRoom) {
    throw StoreUnavailable(failureText(pool.m_address, "all connections are in use"));
  }
  ++own.busy;
  if (!pool.m_idle.empty()) {
    m_pooled = std::move(pool.m_idle.back());
    pool.m_idle.pop_back();
  }
}

ConnectionPool::Lease::~Lease() {
  m_call.use(nullptr);
  const std::lock_guard lock(m_pool.m_mutex);
  if (m_pooled.connection && m_pooled.generation == m_pool.m_generation) {
    m_pool.m_idle.push_back(std::move(m_pooled));
  }
  --m_pool.at(m_use).busy;
  m_pool.m_isReturned.notify_all();
}

SqlConnection &ConnectionPool::Lease::connection() {
  if (!m_pooled.connection) {
    {
      const std::lock_guard lock(m_pool.m_mutex);
      m_pooled.generation = m_pool.m_generation;
    }
    m_pooled.connection = std::make_unique<SqlConnection>(m_pool.m_address, m_pool.m_limits);
  }
  m_call.use(m_pooled.connection.get());
  return *m_pooled.connection;
}

void ConnectionPool::Lease::drop() {
  m_call.use(nullptr);
  m_pooled.connection.reset();
}

bool ConnectionPool::Lease::dropAfter(const soci::soci_error &error) {
  if (!m_pooled.connection) {
    return false;
  }
  if (sqlFailureOf(error) == SqlFailure::ReadOnly) {
    drop();
    const std::lock_guard lock(m_pool.m_mutex);
    ++m_pool.m_generation;
    m_pool.m_idle.clear();
    return !m_call.isExpired();
  }
  // Asked after a failure only, as it takes a round trip.
  if (!m_pooled.connection->isAlive()) {
    drop();
    return !m_call.isExpired();
  }
  return false;
}

void ConnectionPool::Lease::fail(const soci::soci_error &error) {
  const bool isExpired = m_call.isExpired();
  static_cast<void>(dropAfter(error));
  const bool isTemporary = !m_pooled.connection || sqlFailureOf(error) != SqlFailure::Permanent;
  // SQLite keeps a statement under way that found the file locked.
  if (!hasOneConnection(m_pool.m_address)) {
    drop();
  }
  const std::string text =
      failureText(m_pool.m_address, isExpired ? "it does not answer in time" : reasonOf(error));
  if (isExpired || isTemporary) {
    throw StoreUnavailable(text);
  }
  throw StoreError(text);
}

}  // namespace cartonpick::orders
