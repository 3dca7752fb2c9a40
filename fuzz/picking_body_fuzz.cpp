// The body of a report: it is taken only if every line is exactly as it must be, and refused with a
// reason otherwise; what is taken survives being written and read again.

#include "Property.h"
#include "calendar.h"
#include "html.h"
#include "input_error.h"
#include "percent_decoding.h"
#include "picking_body.h"
#include "strict_object.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <simdjson.h>
#include <string_view>

namespace {

using namespace cartonpick::orders;

std::optional<std::vector<PickedLine>> linesOf(std::string_view body) {
  try {
    return readPickingBody(body);
  } catch (const InputError &error) {
    const std::string_view reason = error.what();
    require(!reason.empty() && simdjson::validate_utf8(reason), "a reason for a refusal is a text");
    return std::nullopt;
  }
}

void checkLine(const PickedLine &line, const PickedLine &first) {
  for (const std::string &text : {line.delivery, line.order, line.box, line.item, line.barcode}) {
    require(text.size() <= StrictObject::kMaxBytes && text.find('\0') == std::string::npos &&
                simdjson::validate_utf8(text),
            "a store can hold the texts of a line");
  }
  require(isDateTime(line.pickedAt), "a line was picked at a time of the calendar");
  require(line.delivery == first.delivery, "a report is of one delivery");
}

nlohmann::json toJson(const PickedLine &line) {
  return {{"barcode", line.barcode},
          {"box", line.box},
          {"doc", line.delivery},
          {"item", line.item},
          {"ordernum", line.order},
          {"qty", line.quantity},
          {"sent", 0},
          {"datepicked", line.pickedAt}};
}

void checkWrittenAgain(const std::vector<PickedLine> &lines) {
  auto array = nlohmann::json::array();
  for (const PickedLine &line : lines) {
    array.push_back(toJson(line));
  }
  require(linesOf(array.dump()) == lines, "what is taken reads the same when written again");
}

void checkAgainstPeer(std::string_view body, std::size_t lines) {
  simdjson::dom::parser parser;
  simdjson::dom::array array;
  const std::string copy(body);
  const auto error = parser.parse(copy).get(array);
  // The peer looks no deeper than 1,024 levels, and strict lines have no nested ones at all.
  require(error == simdjson::SUCCESS && array.size() == lines,
          "what is taken is JSON for another reader, too");
}

void checkPercentDecoding(std::string_view text) {
  const auto decoded = percentDecoded(text);
  require(percentDecoded(percentEncoded(text)) == text, "what is encoded decodes to itself");
  require(!decoded || decoded->size() <= text.size(), "decoding makes nothing longer");
  require(decoded || text.find('%') != std::string_view::npos, "only a % can be wrong");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string_view body(reinterpret_cast<const char *>(data), size);
  checkPercentDecoding(body);
  if (const auto lines = linesOf(body)) {
    require(!lines->empty(), "a report that is taken has a line");
    for (const PickedLine &line : *lines) {
      checkLine(line, lines->front());
    }
    checkWrittenAgain(*lines);
    // A mark before the text is taken by one and refused by the other.
    if (!body.starts_with("\xEF\xBB\xBF")) {
      checkAgainstPeer(body, lines->size());
    }
  }
  return 0;
}
