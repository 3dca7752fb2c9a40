#pragma once

#include <string>

namespace cartonpick::orders {

/// The number of picked lines that an SQLite store's file has. Throws SQLite::Exception.
int storedReports(const std::string &file);

}  // namespace cartonpick::orders
