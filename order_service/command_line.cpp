#include "command_line.h"

#include <CLI/CLI.hpp>

namespace cartonpick::orders {

namespace {

constexpr int kBadUsage = 2;

void declareOptions(CLI::App &app, Options &options) {
  app.set_version_flag("--version", "cartonpick-orders " CARTONPICK_VERSION);
  app.add_option("--port", options.port, "The TCP port to listen on; 0 takes any free one")
      ->check(CLI::Range(0, 65535))
      ->capture_default_str();
  app.add_option("--bind", options.bindAddress, "The address to listen on")->capture_default_str();
  app.add_option("--deliveries", options.deliveriesFile,
                 "The deliveries to serve, JSON or CSV; without it the demo deliveries");
  app.add_option("--store", options.storeFile,
                 "The SQLite file for what was sent; without it in memory");
  app.add_flag("--exit-with-parent", options.exitWithParent,
               "End when the parent process ends or standard input is closed");
}

}  // namespace

std::variant<Options, ExitCode> parseCommandLine(int argc, const char *const *argv) {
  CLI::App app("Serves deliveries to pick and takes in what was picked.", "cartonpick-orders");
  Options options;
  declareOptions(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    return ExitCode{app.exit(error) == 0 ? 0 : kBadUsage};
  }
  return options;
}

}  // namespace cartonpick::orders
