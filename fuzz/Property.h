#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// The entry point of a fuzz target, called by libFuzzer or replay.cpp for every input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// Prints `property` and aborts the process if `holds` is false.
inline void require(bool holds, const char *property) {
  if (!holds) {
    static_cast<void>(std::fprintf(stderr, "fuzz: it does not hold that %s\n", property));
    std::abort();
  }
}
