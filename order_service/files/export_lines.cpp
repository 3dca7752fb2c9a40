#include "files/export_lines.h"

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace cartonpick::orders {

namespace {

nlohmann::ordered_json toJson(const StoredLine &stored) {
  const PickedLine &line = stored.line;
  return {{"doc", line.delivery},        {"ordernum", line.order},       {"box", line.box},
          {"item", line.item},           {"barcode", line.barcode},      {"qty", line.quantity},
          {"datepicked", line.pickedAt}, {"received", stored.receivedAt}};
}

std::string field(std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    return std::string(text);
  }
  std::string quoted = "\"";
  for (const char c : text) {
    quoted += c;
    if (c == '"') {
      quoted += c;
    }
  }
  return quoted + '"';
}

}  // namespace

void writeCsv(const std::vector<StoredLine> &lines, std::ostream &out) {
  out << "doc,ordernum,box,item,barcode,qty,datepicked,received\r\n";
  for (const StoredLine &stored : lines) {
    const PickedLine &line = stored.line;
    out << field(line.delivery) << ',' << field(line.order) << ',' << field(line.box) << ','
        << field(line.item) << ',' << field(line.barcode) << ',' << line.quantity << ','
        << field(line.pickedAt) << ',' << field(stored.receivedAt) << "\r\n";
  }
}

void writeJson(const std::vector<StoredLine> &lines, std::ostream &out) {
  auto array = nlohmann::ordered_json::array();
  for (const StoredLine &line : lines) {
    array.push_back(toJson(line));
  }
  out << array.dump(2) << '\n';
}

}  // namespace cartonpick::orders
