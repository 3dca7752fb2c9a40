#pragma once

#include "model/histogram.h"

#include <cstddef>

namespace cartonpick::orders {

/// How a pool of threads or connections is used.
struct PoolUse {
  std::size_t size = 0;     ///< threads or connections that there may be
  std::size_t busy = 0;     ///< those that are in use now
  std::size_t waiting = 0;  ///< requests or calls that wait for one now
  Histogram waits = {};     ///< the waits so far
};

}  // namespace cartonpick::orders
