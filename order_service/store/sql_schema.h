#pragma once

#include "store/sql_address.h"

namespace soci {
class session;
}

namespace cartonpick::orders {

/// Makes the tables that are missing, and brings older ones up to date. Several processes may do so
/// at the same moment. Throws soci::soci_error.
void makeSchema(soci::session &session, SqlDialect dialect);

}  // namespace cartonpick::orders
