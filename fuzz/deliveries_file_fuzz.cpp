// Reads arbitrary deliveries files, CSV or JSON. A file must be accepted as a whole or rejected
// with a reason, and accepted data must survive a round trip through either format.

#include "FuzzInput.h"
#include "Property.h"
#include "files/csv_deliveries.h"
#include "files/csv_records.h"
#include "files/delivery_file.h"
#include "files/json_deliveries.h"
#include "json/order_json.h"
#include "model/calendar.h"
#include "model/input_error.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <simdjson.h>
#include <string_view>
#include <unistd.h>

namespace {

using namespace cartonpick::orders;

using Lines = std::vector<OrderLine>;

template <class Read>
auto tried(const Read &read) -> std::optional<decltype(read())> {
  try {
    return read();
  } catch (const InputError &error) {
    const std::string_view reason = error.what();
    require(!reason.empty() && simdjson::validate_utf8(reason), "the reason is UTF-8 text");
    // Checks only the beginning, because the rest can quote the file.
    require(!reason.starts_with("line 0"), "lines are counted from 1");
    return std::nullopt;
  }
}

Lines linesOf(const Deliveries &deliveries) {
  Lines lines;
  for (const auto &[delivery, its] : deliveries.all()) {
    require(!its.empty(), "a delivery has lines");
    for (const OrderLine &line : its) {
      require(line.delivery == delivery, "a delivery has only its lines");
      lines.push_back(line);
    }
  }
  return lines;
}

void check(const Deliveries &deliveries) {
  const std::set<Article> articles(deliveries.catalogue().begin(), deliveries.catalogue().end());
  for (const OrderLine &line : linesOf(deliveries)) {
    require(line.quantity >= 0, "an ordered quantity is not negative");
    require(isDate(line.orderDate) && isDate(line.shippingDate), "dates are valid");
    require(articles.contains(line.article), "the catalogue has every article");
  }
}

std::string inQuotes(std::string_view field) {
  std::string text = "\"";
  for (const char c : field) {
    text += c;
    if (c == '"') {
      text += c;
    }
  }
  return text + '"';
}

std::string recordOf(const std::vector<std::string> &fields) {
  std::string record;
  for (const std::string &field : fields) {
    if (!record.empty()) {
      record += ',';
    }
    record += inQuotes(field);
  }
  return record.append("\r\n");
}

std::string csvOf(const Lines &lines) {
  std::string csv = recordOf({kOrderLineMembers.begin(), kOrderLineMembers.end()});
  for (const nlohmann::json &json : nlohmann::json::parse(toJson(lines))) {
    std::vector<std::string> fields;
    for (const std::string_view name : kOrderLineMembers) {
      const auto &value = json.at(std::string(name));
      fields.push_back(value.is_string() ? value.get<std::string>() : value.dump());
    }
    csv += recordOf(fields);
  }
  return csv;
}

void checkWrittenAgain(const Deliveries &deliveries) {
  const Lines lines = linesOf(deliveries);
  const auto fromCsv = tried([&] { return linesOf(deliveriesFromCsv(csvOf(lines))); });
  const auto fromJson = tried([&] { return linesOf(deliveriesFromJson(toJson(lines))); });
  require(fromCsv == lines, "accepted lines are the same from CSV");
  require(fromJson == lines, "accepted lines are the same from JSON");
}

void checkRecords(std::string_view text) {
  const auto records = tried([&] { return readCsvRecords(text); });
  if (!records) {
    return;
  }
  std::size_t line = 1;
  std::string again;
  for (const CsvRecord &record : *records) {
    require(record.line >= line, "line numbers do not decrease");
    line = record.line;
    require(!record.fields.empty(), "a record has a field");
    again += recordOf(record.fields);
  }
  const auto reread = tried([&] { return readCsvRecords(again); });
  require(reread && reread->size() == records->size(), "written records have the same number");
  for (std::size_t i = 0; i < records->size(); ++i) {
    require((*reread)[i].fields == (*records)[i].fields, "written fields are the same");
  }
}

/// Reads the same bytes from a file and requires the same outcome.
void checkFile(bool isCsv, const std::string &text, bool isTaken) {
  static const auto kFolder =
      std::filesystem::temp_directory_path() / ("cartonpick-fuzz-" + std::to_string(::getpid()));
  std::filesystem::create_directory(kFolder);
  const auto file = kFolder / (isCsv ? "deliveries.csv" : "deliveries.json");
  std::ofstream(file, std::ios::binary) << text;
  const auto deliveries = tried([&] { return readDeliveryFile(file); });
  std::filesystem::remove_all(kFolder);
  require(deliveries.has_value() == isTaken, "a file is accepted exactly if its text is");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  FuzzInput input(data, size);
  const std::uint8_t choice = input.byte();
  const bool isCsv = choice % 2 == 0;
  const std::string text = input.rest();
  const auto deliveries =
      tried([&] { return isCsv ? deliveriesFromCsv(text) : deliveriesFromJson(text); });
  if (deliveries) {
    check(*deliveries);
    checkWrittenAgain(*deliveries);
  }
  if (isCsv) {
    checkRecords(text);
  }
  constexpr std::uint8_t kRarely = 0xFE;
  if (choice >= kRarely) {
    checkFile(isCsv, text, deliveries.has_value());
  }
  return 0;
}
