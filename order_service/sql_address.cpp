#include "sql_address.h"

#include <utility>

namespace cartonpick::orders {

namespace {

constexpr auto kPostgresScheme = "postgresql://";

}  // namespace

SqlAddress::SqlAddress(std::string where)
    : text(std::move(where)),
      dialect(text.starts_with(kPostgresScheme) ? SqlDialect::Postgres : SqlDialect::Sqlite) {}

std::string SqlAddress::shown() const {
  const auto at = text.rfind('@');
  return dialect == SqlDialect::Postgres && at != std::string::npos
             ? kPostgresScheme + text.substr(at + 1)
             : text;
}

}  // namespace cartonpick::orders
