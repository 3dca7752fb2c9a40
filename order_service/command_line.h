#pragma once

#include "http/http_limits.h"
#include "model/received_report.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace cartonpick::orders {

/// Serve the tablets.
struct ServeOptions {
  std::uint16_t port = 8080;  ///< 0: any free one
  std::string bindAddress = "127.0.0.1";
  /// Without it the deliveries of the store, and without a store the demo deliveries.
  std::optional<std::filesystem::path> deliveriesFile;
  bool demo = false;                     ///< the demo deliveries, also where there is a store
  std::optional<std::string> store;      ///< without: kept in memory
  std::chrono::seconds storeTimeout{8};  ///< for a call of the store
  std::chrono::seconds storeWait{60};    ///< for a database that is away at the start
  /// The token for everything that is not for tablets; without, that is open on loopback alone.
  std::optional<std::filesystem::path> tokenFile;
  bool logsRequests = false;
  /// IP addresses and networks of proxies that are believed about their clients.
  std::vector<std::string> trustedProxies;
  HttpLimits limits;
  bool exitWithParent = false;
};

/// Put deliveries into a store.
struct LoadOptions {
  std::filesystem::path file;
  std::string store;
};

enum class ExportFormat { Csv, Json };

/// Print what was picked.
struct ExportOptions {
  std::string store;
  ReportFilter filter;
  bool allReports = false;  ///< also those that later ones took the place of
  ExportFormat format = ExportFormat::Csv;
};

/// Undo what was reported of a delivery.
struct ReopenOptions {
  std::string delivery;
  std::string store;
};

/// The code with which the process is to exit now.
struct ExitCode {
  int value = 0;
};

using Command = std::variant<ServeOptions, LoadOptions, ExportOptions, ReopenOptions, ExitCode>;

/// Returns a message with "URL" in place of each argument that is one or has a password in it.
std::string withoutUrls(std::string message, int argc, const char *const *argv);

/// Reads the command line. When it asks for help or the version, or is wrong, that text is printed
/// and the exit code returned.
Command parseCommandLine(int argc, const char *const *argv);

}  // namespace cartonpick::orders
