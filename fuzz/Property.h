#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// What libFuzzer, or replay.cpp, calls with one input after the other.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// Ends the process, as a crash would, where something does not hold that has to hold for every
/// input.
inline void require(bool holds, const char *property) {
  if (!holds) {
    static_cast<void>(std::fprintf(stderr, "fuzz: it does not hold that %s\n", property));
    std::abort();
  }
}
