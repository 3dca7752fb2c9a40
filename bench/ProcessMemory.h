#pragma once

/// The resident memory of this process, as reported by Linux (proc(5)). All functions throw
/// std::runtime_error if /proc cannot be read or written.
namespace process_memory {

/// The current resident size in bytes.
double now();
/// The peak resident size in bytes since the last `forgetMost`.
double most();
void forgetMost();

}  // namespace process_memory
