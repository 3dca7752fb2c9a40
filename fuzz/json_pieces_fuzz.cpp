// Parses arbitrary text as a JSON array in pieces of any size. The result must be that of parsing
// the whole text: rejected, or the same elements.

#include "FuzzInput.h"
#include "Property.h"
#include "service/JsonPieces.h"

#include <optional>
#include <sstream>

namespace {

using Elements = std::vector<std::string>;

std::string textOf(simdjson::dom::element element) {
  std::ostringstream text;
  text << simdjson::minify(element);
  return text.str();
}

std::optional<Elements> wholeOf(const std::string &text) {
  simdjson::dom::parser parser;
  simdjson::dom::array array;
  if (parser.parse(text).get(array) != simdjson::SUCCESS) {
    return std::nullopt;
  }
  Elements elements;
  for (const auto element : array) {
    elements.push_back(textOf(element));
  }
  return elements;
}

std::optional<Elements> piecewise(const std::string &text, std::size_t pieceBytes) {
  try {
    const JsonPieces pieces(text, pieceBytes);
    JsonPieces::Reader reader(pieces);
    Elements elements;
    for (std::size_t i = 0; i < pieces.count(); ++i) {
      for (const auto element : reader.read(i)) {
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
  require(piecewise(text, pieceBytes) == whole, "pieces have the elements of the whole array");
  require(piecewise(text, text.size()) == whole, "one piece has the elements of the whole array");
  return 0;
}
