#include "files/export_lines.h"

#include <csv.h>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace cartonpick::orders {

namespace {

nlohmann::ordered_json toJson(const ReceivedReport &received) {
  const PickReport &line = received.report;
  return {{"doc", line.delivery},        {"ordernum", line.order},         {"box", line.box},
          {"item", line.item},           {"barcode", line.barcode},        {"qty", line.quantity},
          {"datepicked", line.pickedAt}, {"received", received.receivedAt}};
}

/// `text` as a field, in quotes only where it needs them.
std::string field(std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    return std::string(text);
  }
  std::string quoted(2 * text.size() + 2, '\0');
  quoted.resize(csv_write(quoted.data(), quoted.size(), text.data(), text.size()));
  return quoted;
}

}  // namespace

void writeCsv(const std::vector<ReceivedReport> &reports, std::ostream &out) {
  out << "doc,ordernum,box,item,barcode,qty,datepicked,received\r\n";
  for (const ReceivedReport &received : reports) {
    const PickReport &line = received.report;
    out << field(line.delivery) << ',' << field(line.order) << ',' << field(line.box) << ','
        << field(line.item) << ',' << field(line.barcode) << ',' << line.quantity << ','
        << field(line.pickedAt) << ',' << field(received.receivedAt) << "\r\n";
  }
}

void writeJson(const std::vector<ReceivedReport> &reports, std::ostream &out) {
  auto array = nlohmann::ordered_json::array();
  for (const ReceivedReport &received : reports) {
    array.push_back(toJson(received));
  }
  out << array.dump(2) << '\n';
}

}  // namespace cartonpick::orders
