#include "files/csv_deliveries.h"

#include "files/csv_records.h"
#include "json/order_json.h"
#include "model/input_error.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <simdjson.h>

namespace cartonpick::orders {

namespace {

// Spreadsheet programs put it before their UTF-8 files.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string place(const CsvRecord &record) {
  return "line " + std::to_string(record.line);
}

/// Spreadsheet programs separate by semicolons where the country writes decimals with commas.
void checkSeparator(std::string_view text) {
  const std::string_view header = text.substr(0, text.find('\n'));
  if (header.find(',') == std::string_view::npos && header.find(';') != std::string_view::npos) {
    throw InputError("line 1: the columns are separated by semicolons instead of commas");
  }
}

void checkHeader(const CsvRecord &header) {
  for (const std::string_view name : kOrderLineMembers) {
    const auto count = std::count(header.fields.begin(), header.fields.end(), name);
    if (count != 1) {
      throw InputError("column \"" + std::string(name) +
                       (count == 0 ? "\" is missing" : "\" is there twice"));
    }
  }
  for (const std::string &name : header.fields) {
    if (std::find(kOrderLineMembers.begin(), kOrderLineMembers.end(), name) ==
        kOrderLineMembers.end()) {
      throw InputError("column \"" + name + "\" is unknown");
    }
  }
}

std::optional<std::int64_t> toInteger(std::string_view text) {
  std::int64_t number = 0;
  const char *const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

/// The field as the JSON value that the same member of an order line has. What is no integer stays
/// a string, for the reader of order lines to refuse.
nlohmann::json toJsonValue(const std::string &name, const std::string &field) {
  const std::optional<std::int64_t> number = name == "qty" ? toInteger(field) : std::nullopt;
  return number ? nlohmann::json(*number) : nlohmann::json(field);
}

OrderLine toOrderLine(const CsvRecord &header, const CsvRecord &record) {
  if (record.fields.size() != header.fields.size()) {
    throw InputError(std::to_string(record.fields.size()) + " fields instead of " +
                     std::to_string(header.fields.size()) +
                     (record.fields.size() < header.fields.size()
                          ? ""
                          : "; a field with a comma must be in quotation marks"));
  }
  nlohmann::json line;
  for (std::size_t i = 0; i < header.fields.size(); ++i) {
    line[header.fields[i]] = toJsonValue(header.fields[i], record.fields[i]);
  }
  return orderLineFromJson(line);
}

std::string_view withoutByteOrderMark(std::string_view text) {
  return text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text;
}

}  // namespace

Deliveries deliveriesFromCsv(std::string_view text) {
  if (!simdjson::validate_utf8(text)) {
    throw InputError("the file is not UTF-8");
  }
  text = withoutByteOrderMark(text);
  checkSeparator(text);
  const std::vector<CsvRecord> records = readCsvRecords(text);
  if (records.empty()) {
    throw InputError("the header line is missing");
  }
  const CsvRecord &header = records.front();
  readAt(place(header), [&] { checkHeader(header); });
  std::vector<OrderLine> lines;
  for (const CsvRecord &record : std::span(records).subspan(1)) {
    lines.push_back(readAt(place(record), [&] { return toOrderLine(header, record); }));
  }
  return {lines, {}};
}

}  // namespace cartonpick::orders
