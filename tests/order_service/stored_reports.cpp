#include "stored_reports.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

namespace cartonpick::orders {

int storedReports(const std::string &file) {
  const SQLite::Database database(file);
  SQLite::Statement query(database, "SELECT count(*) FROM picked_line");
  query.executeStep();
  return query.getColumn(0).getInt();
}

}  // namespace cartonpick::orders
