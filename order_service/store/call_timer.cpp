#include "store/call_timer.h"

#include "store/sql_connection.h"

#include <algorithm>

namespace cartonpick::orders {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kTick = std::chrono::milliseconds(250);

}  // namespace

CallTimer::CallTimer(StoreLimits::Time limit)
    : m_limit(limit), m_thread([this](const std::stop_token &stop) { run(stop); }) {}

void CallTimer::run(const std::stop_token &stop) {
  std::unique_lock lock(m_mutex);
  while (!stop.stop_requested()) {
    m_isAsleep = true;
    m_hasCalls.wait(lock, stop, [this] { return !m_calls.empty(); });
    m_isAsleep = false;
    m_hasCalls.wait_for(lock, stop, kTick, [] { return false; });
    // Again at every tick: SQLite forgets an interruption that comes between two statements.
    for (const Call *call : m_calls) {
      if (call->m_connection != nullptr && call->m_end <= Clock::now()) {
        call->m_connection->interrupt();
      }
    }
  }
}

CallTimer::Call::Call(CallTimer *timer) : m_timer(timer) {
  if (m_timer == nullptr) {
    return;
  }
  m_end = Clock::now() + m_timer->m_limit;
  const std::lock_guard lock(m_timer->m_mutex);
  m_timer->m_calls.push_back(this);
  if (m_timer->m_isAsleep) {
    m_timer->m_hasCalls.notify_one();
  }
}

CallTimer::Call::~Call() {
  if (m_timer != nullptr) {
    const std::lock_guard lock(m_timer->m_mutex);
    std::erase(m_timer->m_calls, this);
  }
}

void CallTimer::Call::use(SqlConnection *connection) {
  if (m_timer != nullptr) {
    const std::lock_guard lock(m_timer->m_mutex);
    m_connection = connection;
  }
}

bool CallTimer::Call::isExpired() const {
  return m_timer != nullptr && m_end <= Clock::now();
}

}  // namespace cartonpick::orders
