#pragma once

#include "FuzzInput.h"

#include <string>

/// Writes documents that are an answer of the service, or nearly: with every form of number, with
/// escapes, surrogates, members that are named twice, nesting and white space, as its input
/// decides.
class JsonGenerator {
 public:
  explicit JsonGenerator(FuzzInput &input) : m_input(input) {}

  std::string document();

  /// Whether the document has something that our readers refuse on purpose, though a lenient reader
  /// would take it.
  [[nodiscard]] bool hasWhatWeRefuse() const { return m_hasWhatWeRefuse; }
  /// Whether our readers may refuse the document as far as the generator knows: something in it may
  /// be no JSON at all, or a member is named twice, of which ours look at both.
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
