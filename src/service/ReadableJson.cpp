#include "service/ReadableJson.h"

#include <algorithm>
#include <array>
#include <simdjson.h>
#include <utility>

namespace {

constexpr std::array<std::string_view, 3> kWords = {"true", "false", "null"};
/// The characters that may follow a backslash.
constexpr std::string_view kEscapes = R"("\/bfnrtu)";

[[noreturn]] void refuse() {
  throw simdjson::simdjson_error(simdjson::TAPE_ERROR);
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isHexDigit(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// Takes the parts of a JSON text from its beginning, after white space. Every function throws
/// simdjson_error if the text is not JSON there. Sizes of numbers and nesting are not limited.
class JsonScanner {
 public:
  explicit JsonScanner(std::string_view text) : m_text(text) {}

  bool take(char c) {
    skipSpace();
    return takeNext(c);
  }
  void require(char c) {
    if (!take(c)) {
      refuse();
    }
  }
  void requireEnd() {
    skipSpace();
    if (m_at != m_text.size()) {
      refuse();
    }
  }

  /// Takes a string and returns it with its quotation marks.
  std::string_view takeString();
  /// Takes a value of any type and returns it.
  std::string_view takeValue();

 private:
  [[nodiscard]] char peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }
  char next();
  bool takeNext(char c);
  void skipSpace();
  void takeEscape();
  void takeScalar();
  void takeNumber();
  void takeDigits();

  std::string_view m_text;
  std::size_t m_at = 0;
};

char JsonScanner::next() {
  if (m_at == m_text.size()) {
    refuse();
  }
  return m_text[m_at++];
}

bool JsonScanner::takeNext(char c) {
  const bool isNext = m_at < m_text.size() && m_text[m_at] == c;
  m_at += isNext ? 1 : 0;
  return isNext;
}

void JsonScanner::skipSpace() {
  m_at = std::min(m_text.find_first_not_of(" \t\n\r", m_at), m_text.size());
}

std::string_view JsonScanner::takeString() {
  require('"');
  const std::size_t begin = m_at - 1;
  for (char c = next(); c != '"'; c = next()) {
    if (static_cast<unsigned char>(c) < ' ') {
      refuse();
    }
    if (c == '\\') {
      takeEscape();
    }
  }
  return m_text.substr(begin, m_at - begin);
}

void JsonScanner::takeEscape() {
  constexpr int kDigits = 4;
  const char c = next();
  if (kEscapes.find(c) == std::string_view::npos) {
    refuse();
  }
  for (int i = 0; c == 'u' && i < kDigits; ++i) {
    if (!isHexDigit(next())) {
      refuse();
    }
  }
}

void JsonScanner::takeDigits() {
  if (!isDigit(next())) {
    refuse();
  }
  while (isDigit(peek())) {
    ++m_at;
  }
}

void JsonScanner::takeNumber() {
  takeNext('-');
  if (!takeNext('0')) {
    takeDigits();
  }
  if (takeNext('.')) {
    takeDigits();
  }
  if (takeNext('e') || takeNext('E')) {
    if (!takeNext('+')) {
      takeNext('-');
    }
    takeDigits();
  }
}

void JsonScanner::takeScalar() {
  skipSpace();
  if (peek() == '"') {
    takeString();
    return;
  }
  for (const std::string_view word : kWords) {
    if (m_text.substr(m_at).starts_with(word)) {
      m_at += word.size();
      return;
    }
  }
  takeNumber();
}

std::string_view JsonScanner::takeValue() {
  skipSpace();
  const std::size_t begin = m_at;
  // The closing brackets of the open arrays and objects. Recursion would limit the nesting.
  std::string open;
  const auto beginMember = [&] {
    if (!open.empty() && open.back() == '}') {
      takeString();
      require(':');
    }
  };
  do {
    const char bracket = take('[') ? ']' : take('{') ? '}' : '\0';
    if (bracket == '\0') {
      takeScalar();
    } else if (!take(bracket)) {
      open += bracket;
      beginMember();
      continue;
    }
    while (!open.empty() && !take(',')) {
      require(open.back());
      open.pop_back();
    }
    beginMember();
  } while (!open.empty());
  return m_text.substr(begin, m_at - begin);
}

/// Copies an array of objects and replaces the parts that simdjson cannot read.
class ReadableCopy {
 public:
  explicit ReadableCopy(std::string_view text) : m_text(text), m_scanner(text) {}

  std::string make() &&;

 private:
  void readElement();
  void readMember();
  [[nodiscard]] bool isReadable(std::string_view scalar);
  void replace(std::string_view part, std::string_view replacement);

  std::string_view m_text;
  JsonScanner m_scanner;
  simdjson::dom::parser m_parser;
  std::string m_copy;
  /// The length of the part of `m_text` that is in `m_copy`.
  std::size_t m_copied = 0;
};

std::string ReadableCopy::make() && {
  m_scanner.require('[');
  if (!m_scanner.take(']')) {
    do {
      readElement();
    } while (m_scanner.take(','));
    m_scanner.require(']');
  }
  m_scanner.requireEnd();
  m_copy += m_text.substr(m_copied);
  return std::move(m_copy);
}

void ReadableCopy::readElement() {
  m_scanner.require('{');
  if (!m_scanner.take('}')) {
    do {
      readMember();
    } while (m_scanner.take(','));
    m_scanner.require('}');
  }
}

void ReadableCopy::readMember() {
  if (const std::string_view key = m_scanner.takeString(); !isReadable(key)) {
    replace(key, R"("")");
  }
  m_scanner.require(':');
  const std::string_view value = m_scanner.takeValue();
  if (value.front() == '[' || value.front() == '{' || !isReadable(value)) {
    replace(value, "{}");
  }
}

bool ReadableCopy::isReadable(std::string_view scalar) {
  return m_parser.parse(scalar.data(), scalar.size()).error() == simdjson::SUCCESS;
}

void ReadableCopy::replace(std::string_view part, std::string_view replacement) {
  const auto begin = static_cast<std::size_t>(part.data() - m_text.data());
  m_copy += m_text.substr(m_copied, begin - m_copied);
  m_copy += replacement;
  m_copied = begin + part.size();
}

}  // namespace

std::string readableArray(std::string_view text) {
  if (!simdjson::validate_utf8(text)) {
    throw simdjson::simdjson_error(simdjson::UTF8_ERROR);
  }
  return ReadableCopy(text).make();
}
