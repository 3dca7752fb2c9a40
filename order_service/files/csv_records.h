#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cartonpick::orders {

/// One record of a CSV text.
struct CsvRecord {
  std::size_t line = 0;  ///< the line of the text on which the record starts, from 1
  std::vector<std::string> fields;
};

/// Splits a CSV text (RFC 4180) into its records; empty lines are none. Throws InputError that
/// gives the line of a misplaced quote.
std::vector<CsvRecord> readCsvRecords(std::string_view text);

}  // namespace cartonpick::orders
