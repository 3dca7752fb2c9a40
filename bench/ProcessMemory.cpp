#include "ProcessMemory.h"

#include <fstream>
#include <malloc.h>
#include <stdexcept>
#include <string>

namespace {

double bytesOf(const std::string &key) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(key + ':')) {
      constexpr double kKibibyte = 1024;
      return std::stod(line.substr(key.size() + 1)) * kKibibyte;
    }
  }
  throw std::runtime_error("/proc/self/status has no " + key);
}

}  // namespace

namespace process_memory {

double now() {
  // Freed memory that malloc keeps would hide the next allocations.
  ::malloc_trim(0);
  return bytesOf("VmRSS");
}

double most() {
  return bytesOf("VmHWM");
}

void forgetMost() {
  std::ofstream file("/proc/self/clear_refs");
  if (!(file << "5" << std::flush)) {
    throw std::runtime_error("/proc/self/clear_refs cannot be written");
  }
}

}  // namespace process_memory
