#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace cartonpick::orders {

/// Writes an array of flat JSON objects into one text. To build a document first took a third of
/// the time of a lookup.
class JsonArrayWriter {
 public:
  void beginObject();
  /// Adds a member to the object. `value` is UTF-8.
  void add(std::string_view name, std::string_view value);
  void add(std::string_view name, std::int32_t value);
  void endObject() { m_text += '}'; }

  /// Returns the array of the objects so far; to be called once.
  std::string take();

 private:
  void addName(std::string_view name);
  void addString(std::string_view text);

  std::string m_text = "[";
};

}  // namespace cartonpick::orders
