#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace cartonpick::orders {

/// How often times were no longer than some bounds.
struct Histogram {
  using Seconds = std::chrono::duration<double>;

  static constexpr std::array kBounds = {0.001, 0.005, 0.025, 0.1, 0.5, 2.5, 10.0};  ///< seconds

  std::array<std::uint64_t, kBounds.size()> within{};  ///< the number of times up to each bound
  std::uint64_t count = 0;
  double sum = 0;  ///< seconds

  void add(Seconds time) {
    ++count;
    sum += time.count();
    for (std::size_t i = 0; i < kBounds.size(); ++i) {
      within[i] += time.count() <= kBounds[i] ? 1 : 0;
    }
  }
};

}  // namespace cartonpick::orders
