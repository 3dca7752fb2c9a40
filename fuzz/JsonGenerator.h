#pragma once

#include "FuzzInput.h"

#include <string>

/// Generates valid and nearly valid service answers from a fuzz input: with all forms of numbers,
/// escapes, surrogates, duplicate members, nesting and white space.
class JsonGenerator {
 public:
  explicit JsonGenerator(FuzzInput &input) : m_input(input) {}

  std::string document();

  /// Returns true if the document contains something that our parsers intentionally reject but a
  /// lenient parser could accept.
  [[nodiscard]] bool hasWhatWeRefuse() const { return m_hasWhatWeRefuse; }
  /// Returns true if our parsers can reject the document: it can contain invalid JSON, duplicate
  /// members, of which our parsers check each one, or a value without a meaning in the program in a
  /// member that one of them uses.
  [[nodiscard]] bool mayBeRefused() const { return m_mayBeRefused; }

 private:
  std::string element();
  std::string object();
  std::string key();
  std::string value();
  std::string nested();
  std::string number();
  std::string string();
  std::string character();
  std::string escape();
  std::string space();

  FuzzInput &m_input;
  bool m_hasWhatWeRefuse = false;
  bool m_mayBeRefused = false;
  /// True within the value of a member that one of our parsers uses.
  bool m_isInUse = false;
};
