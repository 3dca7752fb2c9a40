#pragma once

#include <stdexcept>

namespace cartonpick::orders {

/// A call of the store failed. The text is for the log and for the command line; it names the
/// store, without secrets. It is not for a client.
class StoreError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The store cannot be used now: it is away, does not answer in time, or takes no changes. The same
/// call may succeed later.
class StoreUnavailable : public StoreError {
 public:
  using StoreError::StoreError;

  /// What a client is told.
  static constexpr auto kOutward = "the store is not available";
};

}  // namespace cartonpick::orders
