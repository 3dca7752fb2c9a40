#pragma once

#include "store/store_limits.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace cartonpick::orders {

class SqlConnection;

/// Interrupts the connections of calls that take too long, from a separate thread.
class CallTimer {
 public:
  /// Each call may take `limit`, which is kept to within a quarter of a second.
  explicit CallTimer(StoreLimits::Time limit);
  CallTimer(const CallTimer &) = delete;
  CallTimer &operator=(const CallTimer &) = delete;
  ~CallTimer() = default;

  /// One call, from construction to destruction.
  class Call {
   public:
    /// Without a timer the call has no limit.
    explicit Call(CallTimer *timer);
    ~Call();
    Call(const Call &) = delete;
    Call &operator=(const Call &) = delete;

    /// Sets the connection to interrupt, null for none. It must live until another one is set.
    void use(SqlConnection *connection);

    /// Returns true once the limit is reached.
    bool isExpired() const;

   private:
    friend class CallTimer;

    CallTimer *m_timer;
    SqlConnection *m_connection = nullptr;
    std::chrono::steady_clock::time_point m_end{};
  };

 private:
  void run(const std::stop_token &stop);

  StoreLimits::Time m_limit;
  std::mutex m_mutex;
  std::condition_variable_any m_hasCalls;
  std::vector<Call *> m_calls;
  bool m_isAsleep = false;
  /// The last member: it uses the others.
  std::jthread m_thread;
};

}  // namespace cartonpick::orders
