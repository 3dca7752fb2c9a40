#pragma once

#include <cstddef>
#include <string_view>

namespace cartonpick::orders {

/// Finds the end of a request's head, however the head is cut into pieces. Looks at each byte once.
/// Stops at what a head must not have: control characters, a line feed without its carriage return
/// or the reverse, and lines that begin with a blank. One empty line before the head is allowed.
class HeadScanner {
 public:
  /// Returns how many of the bytes belong to the head, the empty line before it included.
  std::size_t scan(std::string_view bytes);

  bool hasBegun() const { return m_hasLine; }
  bool isWhole() const { return m_state == State::Whole; }
  bool isWrong() const { return m_state == State::Wrong; }

 private:
  enum class State { LineBegin, Line, LineEnd, EmptyLineEnd, Whole, Wrong };

  State next(char c);
  State afterEmptyLine();

  State m_state = State::LineBegin;
  bool m_hasLine = false;
  bool m_hasEmptyLine = false;
};

}  // namespace cartonpick::orders
