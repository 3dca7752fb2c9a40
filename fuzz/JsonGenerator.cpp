#include "JsonGenerator.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

namespace {

using Texts = std::string_view;

constexpr Texts kEscapedKey = "qt\\u0079";
constexpr std::array<Texts, 14> kKeys = {"doc",    "ordernum",  "item",    "barcode", "descr",
                                         "carton", "qty",       "cusname", "brand",   "cdate",
                                         "date",   kEscapedKey, "x",       ""};
constexpr std::span kUsedKeys = std::span(kKeys).first<12>();

/// Numbers that every parser reads with the same value, except for the last digits.
constexpr std::array<Texts, 24> kNumbers = {"0",
                                            "-0",
                                            "7",
                                            "-7",
                                            "2147483647",
                                            "2147483648",
                                            "-2147483648",
                                            "-2147483649",
                                            "9007199254740993",
                                            "9223372036854775807",
                                            "-9223372036854775808",
                                            "18446744073709551615",
                                            "0.0",
                                            "-0.0",
                                            "1.0",
                                            "2.5",
                                            "-0.1e1",
                                            "1e3",
                                            "1E+2",
                                            "12e-1",
                                            "1e22",
                                            "5e-324",
                                            "1.7976931348623157e308",
                                            "0.1000000000000000055511151231257827"};

/// Integers beyond 64 bits. Numbers beyond the range of a double are left out: Qt rejects them.
constexpr std::array<Texts, 3> kHugeNumbers = {"18446744073709551616", "-9223372036854775809",
                                               "123456789012345678901234567890"};

constexpr std::array<Texts, 12> kBrokenNumbers = {"01",  "-",   "+1",        ".5",   "1.",  "1e",
                                                  "1e+", "NaN", "-Infinity", "0x10", "1_0", "--1"};

constexpr std::array<Texts, 8> kEscapes = {"\\\"", "\\\\", "\\/", "\\b",
                                           "\\f",  "\\n",  "\\r", "\\t"};

constexpr std::array<Texts, 7> kUnicodeEscapes = {
    "\\u0041", "\\u0000", "\\u00e9", "\\uFFFF", "\\ufeff", "\\ud83d\\ude00", "\\uDBFF\\uDFFF"};

// Each one must end so that the next character cannot complete a surrogate pair.
constexpr std::array<Texts, 6> kLoneSurrogates = {
    "\\ud83d.", "\\ude00", "\\ud83dx", "\\ude00\\ud83d.", "\\ud83d\\ud83d.", "\\ud83d\\u0041"};

constexpr std::array<Texts, 5> kUnknownEscapes = {"\\x", "\\'", "\\u12G4", "\\u12.", "\\U0041"};

/// Control characters, which JSON allows only as escapes.
constexpr std::array<Texts, 4> kControls = {"\n", "\t", "\x01", "\x1f"};

constexpr std::array<Texts, 8> kCharacters = {"a", "7", " ", "é", "ß", "漢", "😀", "\xEF\xBB\xBF"};

constexpr std::array<Texts, 5> kNoUtf8 = {"\x80", "\xC0\xAF", "\xED\xA0\x80", "\xF8\x88\x80\x80",
                                          "\xE2\x82."};

constexpr std::size_t kRarely = 16;
constexpr std::size_t kVeryRarely = 64;

}  // namespace

std::string JsonGenerator::document() {
  std::string text = m_input.onceIn(kRarely) ? "\xEF\xBB\xBF" : "";
  text += space();
  if (m_input.onceIn(kVeryRarely)) {
    text += value();
  } else {
    text += '[';
    for (std::size_t count = m_input.below(6); count > 0; --count) {
      text += element() + (count > 1 ? "," : "");
    }
    if (m_input.onceIn(kVeryRarely)) {
      m_mayBeRefused = true;
      text += m_input.line();
    }
    text += ']';
  }
  text += space();
  if (m_input.onceIn(kVeryRarely)) {
    m_mayBeRefused = true;
    text += m_input.line();
  }
  return text;
}

std::string JsonGenerator::element() {
  return space() + (m_input.onceIn(kVeryRarely) ? value() : object()) + space();
}

std::string JsonGenerator::object() {
  std::string text = "{";
  std::set<std::string> keys;
  for (std::size_t count = m_input.below(8); count > 0; --count) {
    const std::string name = key();
    m_mayBeRefused |= !keys.insert(name == kEscapedKey ? "qty" : name).second;
    m_isInUse = std::find(kUsedKeys.begin(), kUsedKeys.end(), name) != kUsedKeys.end();
    text += space() + '"' + name + '"' + space() + ':' + space() + value() + space();
    m_isInUse = false;
    text += count > 1 ? "," : "";
  }
  return text + space() + '}';
}

std::string JsonGenerator::key() {
  return m_input.onceIn(kRarely) ? character() : std::string(m_input.oneOf(kKeys));
}

std::string JsonGenerator::value() {
  switch (m_input.below(16)) {
    case 0:
      return "null";
    case 1:
      return "true";
    case 2:
      return "false";
    case 3:
      return nested();
    case 4:
    case 5:
    case 6:
    case 7:
    case 8:
    case 9:
      return number();
    default:
      return string();
  }
}

std::string JsonGenerator::nested() {
  // Both parsers limit the depth to about 1,000.
  constexpr std::size_t kDepths = 900;
  const std::size_t depth = 1 + (m_input.onceIn(kRarely) ? m_input.below(kDepths) : 0);
  std::string begin;
  std::string end;
  for (std::size_t i = 0; i < depth; ++i) {
    const bool isArray = depth > 2 || m_input.below(2) == 0;
    begin += isArray ? "[" : "{\"a\":";
    end += isArray ? ']' : '}';
  }
  return begin + (m_input.below(2) == 0 ? number() : string()) +
         std::string(end.rbegin(), end.rend());
}

std::string JsonGenerator::number() {
  if (m_input.onceIn(kVeryRarely)) {
    m_mayBeRefused |= m_isInUse;
    return std::string(m_input.oneOf(kHugeNumbers));
  }
  if (m_input.onceIn(kVeryRarely)) {
    m_mayBeRefused = true;
    return std::string(m_input.oneOf(kBrokenNumbers));
  }
  if (m_input.below(2) == 0) {
    return std::string(m_input.oneOf(kNumbers));
  }
  // A random 64-bit integer, with or without fraction and exponent.
  constexpr std::size_t kMaxExponent = 200;
  const auto whole = static_cast<std::int64_t>(m_input.number() >> m_input.below(64));
  std::string text = std::to_string(whole);
  text += m_input.below(2) == 0 ? "" : '.' + std::to_string(m_input.below(1000));
  if (m_input.below(4) == 0) {
    text += m_input.below(2) == 0 ? "e" : "E-";
    text += std::to_string(m_input.below(kMaxExponent));
  }
  return text;
}

std::string JsonGenerator::string() {
  std::string text = "\"";
  for (std::size_t count = m_input.below(12); count > 0; --count) {
    text += character();
  }
  return text + '"';
}

std::string JsonGenerator::character() {
  if (m_input.onceIn(kVeryRarely)) {
    m_hasWhatWeRefuse = true;
    return std::string(m_input.oneOf(kNoUtf8));
  }
  if (m_input.onceIn(kVeryRarely)) {
    m_hasWhatWeRefuse = true;
    return std::string(m_input.oneOf(kControls));
  }
  return m_input.below(4) == 0 ? escape() : std::string(m_input.oneOf(kCharacters));
}

std::string JsonGenerator::escape() {
  if (m_input.onceIn(kRarely)) {
    if (m_input.below(2) == 0) {
      m_mayBeRefused |= m_isInUse;
      return std::string(m_input.oneOf(kLoneSurrogates));
    }
    m_hasWhatWeRefuse = true;
    return std::string(m_input.oneOf(kUnknownEscapes));
  }
  return std::string(m_input.below(2) == 0 ? m_input.oneOf(kEscapes)
                                           : m_input.oneOf(kUnicodeEscapes));
}

std::string JsonGenerator::space() {
  constexpr std::array<Texts, 6> kSpaces = {"", "", "", " ", "\r\n", "\t "};
  return std::string(m_input.oneOf(kSpaces));
}
