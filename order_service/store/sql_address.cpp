#include "store/sql_address.h"

#include <string_view>
#include <utility>

namespace cartonpick::orders {

namespace {

constexpr auto kPostgresScheme = "postgresql://";

bool isPostgres(std::string_view text) {
  return text.starts_with(kPostgresScheme) || text.starts_with("postgres://");
}

}  // namespace

SqlAddress::SqlAddress(std::string where)
    : text(std::move(where)),
      dialect(isPostgres(text) ? SqlDialect::Postgres : SqlDialect::Sqlite) {}

std::string SqlAddress::shown() const {
  const auto at = text.rfind('@');
  return dialect == SqlDialect::Postgres && at != std::string::npos
             ? kPostgresScheme + text.substr(at + 1)
             : text;
}

}  // namespace cartonpick::orders
