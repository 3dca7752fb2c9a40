#pragma once

#include "model/deliveries.h"
#include "store/sql_address.h"

namespace soci {
class session;
}

namespace cartonpick::orders {

/// Inserts the deliveries, in place of those with the same numbers, and the articles that are not
/// there yet. To be called in a transaction. Throws soci::soci_error.
void insertDeliveries(soci::session &session, SqlDialect dialect, const Deliveries &deliveries);

/// Removes the lines of all deliveries and all articles; reports stay. To be called in a
/// transaction. Throws soci::soci_error.
void removeDeliveries(soci::session &session);

}  // namespace cartonpick::orders
