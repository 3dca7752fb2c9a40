#pragma once

#include <chrono>
#include <cstddef>

namespace cartonpick::orders {

/// The times that a call of the store may take, and the number of concurrent calls. Beyond a limit
/// a call throws StoreUnavailable.
struct StoreLimits {
  using Time = std::chrono::milliseconds;

  Time connection = Time(2000);  ///< for a free connection
  Time lock = Time(4000);        ///< for a row or a file that another call changes
  Time statement = Time(6000);   ///< for one statement
  Time call = Time(8000);        ///< for all of the call

  /// Connections of each use: no more calls of it are under way at once.
  std::size_t readers = 8;
  std::size_t writers = 8;
  std::size_t probes = 2;

  /// The limits of calls that may take a given time, in the same proportion.
  static StoreLimits within(Time call) {
    return {.connection = call / 4, .lock = call / 2, .statement = call * 3 / 4, .call = call};
  }
};

}  // namespace cartonpick::orders
