#pragma once

namespace soci {
class soci_error;
}

namespace cartonpick::orders {

/// What a database's error says about the same call later.
enum class SqlFailure {
  Permanent,    ///< it fails again
  Unavailable,  ///< it may succeed
  ReadOnly,     ///< it may succeed through another connection, as this one takes no changes
};

SqlFailure sqlFailureOf(const soci::soci_error &error);

}  // namespace cartonpick::orders
