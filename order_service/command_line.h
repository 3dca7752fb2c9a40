#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>

namespace cartonpick::orders {

struct Options {
  std::uint16_t port = 8080;  ///< 0: any free one
  std::string bindAddress = "127.0.0.1";
  std::optional<std::filesystem::path> deliveriesFile;  ///< without: the demo deliveries
  std::optional<std::string> storeFile;                 ///< without: kept in memory
  bool exitWithParent = false;
};

/// The code with which the process is to exit now.
struct ExitCode {
  int value = 0;
};

/// Reads the command line. When it asks for help or the version, or is wrong, that text is printed
/// and the exit code returned.
std::variant<Options, ExitCode> parseCommandLine(int argc, const char *const *argv);

}  // namespace cartonpick::orders
