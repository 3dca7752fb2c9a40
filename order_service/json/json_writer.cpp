#include "json/json_writer.h"

#include <utility>

namespace cartonpick::orders {

namespace {

bool isEscaped(char c) {
  constexpr unsigned char kFirstPrintable = 0x20;
  return c == '"' || c == '\\' || static_cast<unsigned char>(c) < kFirstPrintable;
}

std::string escaped(char c) {
  constexpr std::string_view kNamed = "\"\\\b\f\n\r\t";
  constexpr std::string_view kNames = "\"\\bfnrt";
  constexpr std::string_view kHexDigits = "0123456789abcdef";
  const auto named = kNamed.find(c);
  if (named != std::string_view::npos) {
    return {'\\', kNames[named]};
  }
  const auto code = static_cast<unsigned char>(c);
  return {'\\', 'u', '0', '0', kHexDigits[code / 16], kHexDigits[code % 16]};
}

}  // namespace

void JsonArrayWriter::beginObject() {
  m_text += m_text.size() == 1 ? "{" : ",{";
}

void JsonArrayWriter::add(std::string_view name, std::string_view value) {
  addName(name);
  addString(value);
}

void JsonArrayWriter::add(std::string_view name, std::int32_t value) {
  addName(name);
  m_text += std::to_string(value);
}

std::string JsonArrayWriter::take() {
  m_text += ']';
  return std::move(m_text);
}

void JsonArrayWriter::addName(std::string_view name) {
  if (m_text.back() != '{') {
    m_text += ',';
  }
  addString(name);
  m_text += ':';
}

void JsonArrayWriter::addString(std::string_view text) {
  m_text += '"';
  std::size_t begin = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isEscaped(text[i])) {
      m_text += text.substr(begin, i - begin);
      m_text += escaped(text[i]);
      begin = i + 1;
    }
  }
  m_text += text.substr(begin);
  m_text += '"';
}

}  // namespace cartonpick::orders
