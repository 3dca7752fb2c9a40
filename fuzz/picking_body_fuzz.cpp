// Reads arbitrary report bodies. A body must be accepted only if every line is valid, and be
// rejected with a reason otherwise. Accepted data must survive being written and read again.

#include "Property.h"
#include "http/percent_decoding.h"
#include "json/strict_object.h"
#include "model/calendar.h"
#include "model/input_error.h"
#include "pages/html.h"
#include "tablet_api/picking_body.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <simdjson.h>
#include <string_view>

namespace {

using namespace cartonpick::orders;

std::optional<std::vector<PickReport>> linesOf(std::string_view body) {
  try {
    return readPickingBody(body);
  } catch (const InputError &error) {
    const std::string_view reason = error.what();
    require(!reason.empty() && simdjson::validate_utf8(reason), "the reason is UTF-8 text");
    return std::nullopt;
  }
}

void checkLine(const PickReport &line, const PickReport &first) {
  for (const std::string &text : {line.delivery, line.order, line.box, line.item, line.barcode}) {
    require(text.size() <= StrictObject::kMaxBytes && text.find('\0') == std::string::npos &&
                simdjson::validate_utf8(text),
            "the texts of a line can be stored");
  }
  require(isDateTime(line.pickedAt), "the pick time of a line is valid");
  require(line.delivery == first.delivery, "a report has one delivery");
}

nlohmann::json toJson(const PickReport &line) {
  return {{"barcode", line.barcode},
          {"box", line.box},
          {"doc", line.delivery},
          {"item", line.item},
          {"ordernum", line.order},
          {"qty", line.quantity},
          {"sent", 0},
          {"datepicked", line.pickedAt}};
}

void checkWrittenAgain(const std::vector<PickReport> &lines) {
  auto array = nlohmann::json::array();
  for (const PickReport &line : lines) {
    array.push_back(toJson(line));
  }
  require(linesOf(array.dump()) == lines,
          "accepted lines are the same when written and read again");
}

void checkAgainstPeer(std::string_view body, std::size_t lines) {
  simdjson::dom::parser parser;
  simdjson::dom::array array;
  const std::string copy(body);
  const auto error = parser.parse(copy).get(array);
  // simdjson limits the depth to 1,024 levels; valid lines have no nested values.
  require(error == simdjson::SUCCESS && array.size() == lines,
          "an accepted body is valid JSON for another parser");
}

void checkPercentDecoding(std::string_view text) {
  const auto decoded = percentDecoded(text);
  require(percentDecoded(percentEncoded(text)) == text, "an encoded text decodes to itself");
  require(!decoded || decoded->size() <= text.size(), "a decoded text is not longer");
  require(decoded || text.find('%') != std::string_view::npos, "only a text with % can be invalid");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string_view body(reinterpret_cast<const char *>(data), size);
  checkPercentDecoding(body);
  if (const auto lines = linesOf(body)) {
    require(!lines->empty(), "an accepted report has lines");
    for (const PickReport &line : *lines) {
      checkLine(line, lines->front());
    }
    checkWrittenAgain(*lines);
    // The two parsers treat a byte order mark differently.
    if (!body.starts_with("\xEF\xBB\xBF")) {
      checkAgainstPeer(body, lines->size());
    }
  }
  return 0;
}
