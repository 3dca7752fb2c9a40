#pragma once

/// The memory of this process, as Linux counts it (proc(5)).
namespace process_memory {

/// The bytes that are in memory now.
double now();
/// The most bytes that were in memory since the last `forgetMost`.
double most();
void forgetMost();

}  // namespace process_memory
