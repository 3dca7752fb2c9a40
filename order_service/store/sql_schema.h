#pragma once

#include "store/sql_address.h"

namespace soci {
class session;
}

namespace cartonpick::orders {

/// The version of the schema that this program makes and uses.
inline constexpr int kSchemaVersion = 3;

/// Brings the schema up to kSchemaVersion, from nothing or from any older version. Several
/// processes may do so at the same moment, and programs of the version before go on using it.
/// Throws soci::soci_error, also if a newer program has changed the schema so that this one cannot
/// use it.
void makeSchema(soci::session &session, SqlDialect dialect);

}  // namespace cartonpick::orders
