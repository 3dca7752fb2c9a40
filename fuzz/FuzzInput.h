#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Takes the decisions of a fuzz target out of its input, from the front. An input that is used up
/// decides 0, so that every run ends.
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

  /// One of the numbers from 0 up to, and without, `end`; `end` is at most 65,536.
  std::size_t below(std::size_t end) {
    constexpr std::size_t kByteRange = 256;
    const std::size_t high = end > kByteRange ? byte() * kByteRange : 0;
    return (high + byte()) % end;
  }

  /// True once in `count` times.
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

  /// What stands before the next line feed, which is taken, too.
  std::string line() {
    const auto end = std::find(m_rest.begin(), m_rest.end(), std::uint8_t{'\n'});
    std::string text = bytes(static_cast<std::size_t>(end - m_rest.begin()));
    byte();
    return text;
  }

  /// One of `choices`, of which there is at least one.
  template <class Choices>
  decltype(auto) oneOf(const Choices &choices) {
    return choices[below(std::size(choices))];
  }

 private:
  std::span<const std::uint8_t> m_rest;
};
