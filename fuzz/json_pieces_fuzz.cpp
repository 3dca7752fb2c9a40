// Parses arbitrary text as a JSON array of objects in pieces of any size. The result must be that
// of parsing the whole text: rejected, or the same elements. The text with only readable values
// must be accepted if the whole text is.

#include "FuzzInput.h"
#include "Property.h"
#include "service/JsonPieces.h"
#include "service/ReadableJson.h"

#include <algorithm>
#include <optional>
#include <sstream>

namespace {

using Elements = std::vector<std::string>;

std::string textOf(simdjson::dom::object element) {
  std::ostringstream text;
  text << simdjson::minify(element);
  // How much of a piece is replaced depends on its size, so all that may be replaced is replaced.
  return readableArray('[' + text.str() + ']');
}

std::optional<Elements> wholeOf(const std::string &text) {
  simdjson::dom::parser parser;
  Elements elements;
  try {
    simdjson::dom::array array;
    if (parser.parse(text).get(array) != simdjson::SUCCESS) {
      array = parser.parse(readableArray(text));
    }
    for (const simdjson::dom::object element : array) {
      elements.push_back(textOf(element));
    }
    return elements;
  } catch (const simdjson::simdjson_error &) {
    return std::nullopt;
  }
}

/// Returns true if `text` becomes an array of objects when its values are made readable.
bool isReadableArray(const std::string &text) {
  try {
    simdjson::dom::parser parser;
    const simdjson::dom::array array = parser.parse(readableArray(text));
    return std::all_of(array.begin(), array.end(),
                       [](simdjson::dom::element element) { return element.is_object(); });
  } catch (const simdjson::simdjson_error &) {
    return false;
  }
}

std::optional<Elements> piecewise(const std::string &text, std::size_t pieceBytes) {
  try {
    const JsonPieces pieces(text, pieceBytes);
    JsonPieces::Reader reader(pieces);
    Elements elements;
    for (std::size_t i = 0; i < pieces.count(); ++i) {
      for (const simdjson::dom::object element : reader.read(i)) {
        elements.push_back(textOf(element));
      }
    }
    return elements;
  } catch (const simdjson::simdjson_error &) {
    return std::nullopt;
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  FuzzInput input(data, size);
  const std::size_t pieceBytes = input.byte();
  const std::string text = input.rest();
  const auto whole = wholeOf(text);
  require(isReadableArray(text) == whole.has_value(), "an array stays one in its readable form");
  require(piecewise(text, pieceBytes) == whole, "pieces have the elements of the whole array");
  require(piecewise(text, text.size()) == whole, "one piece has the elements of the whole array");
  return 0;
}
