#include "http/head_scanner.h"

namespace cartonpick::orders {

namespace {

bool isControl(char c) {
  return (static_cast<unsigned char>(c) < ' ' && c != '\t') || c == '\x7f';
}

}  // namespace

std::size_t HeadScanner::scan(std::string_view bytes) {
  std::size_t count = 0;
  while (count < bytes.size() && !isWhole() && !isWrong()) {
    m_state = next(bytes[count]);
    ++count;
  }
  return count;
}

HeadScanner::State HeadScanner::next(char c) {
  switch (m_state) {
    case State::LineBegin:
      if (c == '\r') {
        return State::EmptyLineEnd;
      }
      m_hasLine = true;
      return isControl(c) || c == ' ' || c == '\t' ? State::Wrong : State::Line;
    case State::Line:
      if (c == '\r') {
        return State::LineEnd;
      }
      return isControl(c) ? State::Wrong : State::Line;
    case State::LineEnd:
      return c == '\n' ? State::LineBegin : State::Wrong;
    case State::EmptyLineEnd:
      return c == '\n' ? afterEmptyLine() : State::Wrong;
    default:
      return m_state;
  }
}

HeadScanner::State HeadScanner::afterEmptyLine() {
  if (m_hasLine) {
    return State::Whole;
  }
  if (m_hasEmptyLine) {
    return State::Wrong;
  }
  m_hasEmptyLine = true;
  return State::LineBegin;
}

}  // namespace cartonpick::orders
