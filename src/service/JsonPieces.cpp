#include "service/JsonPieces.h"

#include "service/ReadableJson.h"

namespace {

/// Returns the position of the closing quotation mark of the string that begins at `begin`.
std::size_t endOfString(std::string_view text, std::size_t begin) {
  std::size_t i = begin + 1;
  while (i < text.size() && text[i] != '"') {
    i += text[i] == '\\' ? 2 : 1;
  }
  return i;
}

/// Returns positions of commas between elements of the array `text`, at least `pieceBytes` bytes
/// apart. In invalid JSON the positions are arbitrary.
std::vector<std::size_t> cutsOf(std::string_view text, std::size_t pieceBytes) {
  std::vector<std::size_t> cuts;
  std::size_t begin = 0;
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    switch (text[i]) {
      case '"':
        i = endOfString(text, i);
        break;
      case '[':
      case '{':
        ++depth;
        break;
      case ']':
      case '}':
        --depth;
        break;
      case ',':
        if (depth == 1 && i - begin >= pieceBytes) {
          cuts.push_back(i);
          begin = i;
        }
        break;
      default:
        break;
    }
  }
  return cuts;
}

}  // namespace

JsonPieces::JsonPieces(std::string_view text, std::size_t pieceBytes)
    : m_text(text), m_cuts(cutsOf(text, pieceBytes)) {}

simdjson::simdjson_result<simdjson::dom::element> JsonPieces::Reader::parse() {
  m_text.reserve(m_text.size() + simdjson::SIMDJSON_PADDING);
  return m_parser.parse(m_text.data(), m_text.size(), false);
}

simdjson::dom::array JsonPieces::Reader::read(std::size_t index) {
  const std::vector<std::size_t> &cuts = m_pieces.m_cuts;
  const std::size_t begin = index == 0 ? 0 : cuts[index - 1];
  const std::size_t end = index == cuts.size() ? m_pieces.m_text.size() : cuts[index] + 1;
  m_text.reserve(end - begin + simdjson::SIMDJSON_PADDING);
  m_text = m_pieces.m_text.substr(begin, end - begin);
  if (index != 0) {
    m_text.front() = '[';
  }
  if (index != cuts.size()) {
    m_text.back() = ']';
  }
  auto piece = parse();
  if (piece.error() != simdjson::SUCCESS) {
    m_text = readableArray(m_text);
    piece = parse();
  }
  const simdjson::dom::array elements = piece;
  // Two commas in a row, or one before the closing bracket, result in an empty piece.
  if (elements.size() == 0 && !cuts.empty()) {
    throw simdjson::simdjson_error(simdjson::TAPE_ERROR);
  }
  return elements;
}
