#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Derives the decisions of a fuzz target from its input, front to back. After the end of the input
/// every value is 0, so every run terminates.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t *data, std::size_t size) : m_rest(data, size) {}

  [[nodiscard]] bool isEmpty() const { return m_rest.empty(); }

  std::uint8_t byte() {
    if (m_rest.empty()) {
      return 0;
    }
    const std::uint8_t first = m_rest.front();
    m_rest = m_rest.subspan(1);
    return first;
  }

  /// Returns a number from 0 to `end` - 1; `end` is from 1 to 65,536.
  std::size_t below(std::size_t end) {
    constexpr std::size_t kByteRange = 256;
    const std::size_t high = end > kByteRange ? byte() * kByteRange : 0;
    return (high + byte()) % end;
  }

  /// Returns true with a probability of 1 in `count`.
  bool onceIn(std::size_t count) { return below(count) == count - 1; }

  std::uint64_t number() {
    constexpr int kBytes = 8;
    std::uint64_t value = 0;
    for (int i = 0; i < kBytes; ++i) {
      value = value * 256 + byte();
    }
    return value;
  }

  std::string bytes(std::size_t count) {
    const auto taken = m_rest.first(std::min(count, m_rest.size()));
    m_rest = m_rest.subspan(taken.size());
    return {taken.begin(), taken.end()};
  }

  std::string rest() { return bytes(m_rest.size()); }

  /// Consumes and returns the text up to the next line feed, and consumes the line feed.
  std::string line() {
    const auto end = std::find(m_rest.begin(), m_rest.end(), std::uint8_t{'\n'});
    std::string text = bytes(static_cast<std::size_t>(end - m_rest.begin()));
    byte();
    return text;
  }

  /// Returns an element of `choices`, which must not be empty.
  template <class Choices>
  decltype(auto) oneOf(const Choices &choices) {
    return choices[below(std::size(choices))];
  }

 private:
  std::span<const std::uint8_t> m_rest;
};
