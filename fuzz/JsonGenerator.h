#pragma once

#include "FuzzInput.h"

#include <string>

/// Generates valid and nearly valid answers of the service from a fuzz input: with all forms of
/// numbers, escapes, surrogates, duplicate members, nesting and white space.
class JsonGenerator {
 public:
  explicit JsonGenerator(FuzzInput &input) : m_input(input) {}

  std::string document();

  /// Returns true if the document contains something that our parsers reject intentionally, but a
  /// lenient parser may accept.
  [[nodiscard]] bool hasWhatWeRefuse() const { return m_hasWhatWeRefuse; }
  /// Returns true if our parsers may reject the document: it may contain invalid JSON or duplicate
  /// members, of which our parsers check each one.
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
};
