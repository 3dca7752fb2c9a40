#include "command_line.h"

#include "model/calendar.h"
#include "model/stored_text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <iostream>
#include <map>
#include <span>
#include <sstream>
#include <string_view>

namespace cartonpick::orders {

namespace {

constexpr int kBadUsage = 2;
constexpr auto kStoreText = "The store: an SQLite file, or postgresql://USER@HOST/DATABASE";

void declareSeconds(CLI::App &app, const std::string &name, std::chrono::milliseconds &value,
                    const std::string &description) {
  constexpr int kMaxSeconds = 3600;
  app.add_option_function<int>(
         name, [&value](int seconds) { value = std::chrono::seconds(seconds); }, description)
      ->type_name("SECONDS")
      ->check(CLI::Range(1, kMaxSeconds))
      ->default_str(
          std::to_string(std::chrono::duration_cast<std::chrono::seconds>(value).count()));
}

void declareLimits(CLI::App &app, HttpLimits &limits) {
  constexpr int kMaxConnections = 100'000;
  app.add_option("--max-connections", limits.connections, "How many connections may be open")
      ->check(CLI::Range(1, kMaxConnections))
      ->capture_default_str();
  app.add_option(
         "--max-connections-per-address", limits.waitingOfOneAddress,
         "How many of them may wait for one client's address; a trusted proxy may have more")
      ->check(CLI::Range(1, kMaxConnections))
      ->capture_default_str();
  declareSeconds(app, "--request-timeout", limits.request, "How long a request may take to arrive");
  declareSeconds(app, "--idle-timeout", limits.idle, "How long a connection may be idle");
}

/// An answer gets more time than a call of the store, so that the store's limit is the one reached.
void setStoreTimeout(ServeOptions &options, std::chrono::seconds timeout) {
  constexpr std::chrono::seconds kForTheRest(10);
  options.storeTimeout = timeout;
  options.limits.handler =
      std::max<std::chrono::milliseconds>(HttpLimits().handler, timeout + kForTheRest);
}

void declareServing(CLI::App &app, ServeOptions &options) {
  app.add_option("--port", options.port, "The TCP port to listen on; 0 takes any free one")
      ->check(CLI::Range(0, 65535))
      ->capture_default_str();
  app.add_option("--bind", options.bindAddress, "The address to listen on")->capture_default_str();
  CLI::Option *deliveries =
      app.add_option("--deliveries", options.deliveriesFile,
                     "The deliveries to serve, JSON or CSV; without it those of the store, and "
                     "without a store the demo deliveries");
  app.add_flag("--demo", options.demo, "Serve the demo deliveries, also with a store")
      ->excludes(deliveries);
  app.add_option("--store", options.store, std::string(kStoreText) + "; without it in memory");
  app.add_option_function<int>(
         "--store-timeout",
         [&options](int seconds) { setStoreTimeout(options, std::chrono::seconds(seconds)); },
         "How many seconds a call of the store may take")
      ->check(CLI::Range(1, 3600))
      ->default_str(std::to_string(options.storeTimeout.count()));
  app.add_option_function<int>(
         "--wait-for-store",
         [&options](int seconds) { options.storeWait = std::chrono::seconds(seconds); },
         "For how many seconds to try again if the database is away at the start")
      ->check(CLI::Range(0, 86'400))
      ->default_str(std::to_string(options.storeWait.count()));
  app.add_option(
      "--token-file", options.tokenFile,
      "The file whose first line is the token for pages and metrics; without it they are "
      "there on loopback only");
  app.add_flag("--log-requests", options.logsRequests,
               "Write a line of JSON to standard error for each request");
  app.add_option("--trusted-proxy", options.trustedProxies,
                 "A proxy, or a network of proxies, that tells the client's address by "
                 "X-Forwarded-For or Forwarded; may be given more than once")
      ->type_name("ADDRESS[/BITS]")
      ->allow_extra_args(false);
  declareLimits(app, options.limits);
  app.add_flag("--exit-with-parent", options.exitWithParent,
               "End when the parent process ends or standard input is closed");
}

CLI::App *declareLoading(CLI::App &app, LoadOptions &options) {
  CLI::App *load =
      app.add_subcommand("load", "Puts deliveries into a store, or replaces them there");
  load->add_option("FILE", options.file, "The deliveries, JSON or CSV")->required();
  load->add_option("--store", options.store, kStoreText)->required();
  return load;
}

std::string checkDay(const std::string &day) {
  return isDateTime(day + " 00:00:00") ? "" : "not a day written yyyy-MM-dd: " + day;
}

std::string checkNumber(const std::string &number) {
  return isStorable(number) ? "" : "not a number of a delivery: it is not UTF-8";
}

CLI::App *declareExporting(CLI::App &app, ExportOptions &options) {
  static const std::map<std::string, ExportFormat> kFormats{{"csv", ExportFormat::Csv},
                                                            {"json", ExportFormat::Json}};
  CLI::App *command = app.add_subcommand("export", "Prints what was picked");
  command->add_option("--store", options.store, kStoreText)->required();
  command->add_option("--delivery", options.filter.delivery, "Of this delivery only")
      ->check(CLI::Validator(checkNumber, "NUMBER"));
  command
      ->add_option("--day", options.filter.day,
                   "Picked on this day only, by the tablet's clock, yyyy-MM-dd")
      ->check(CLI::Validator(checkDay, "DAY"));
  command->add_flag("--all", options.allReports,
                    "All reports of a line, also those that later ones took the place of");
  command
      ->add_option_function<std::string>(
          "--format", [&](const std::string &name) { options.format = kFormats.at(name); },
          "csv or json")
      ->check(CLI::IsMember({"csv", "json"}))
      ->default_str("csv");
  return command;
}

CLI::App *declareReopening(CLI::App &app, ReopenOptions &options) {
  CLI::App *reopen = app.add_subcommand(
      "reopen", "Undoes what was reported of a delivery, so that it can be picked again");
  reopen->add_option("DELIVERY", options.delivery, "The number of the delivery")
      ->required()
      ->check(CLI::Validator(checkNumber, "NUMBER"));
  reopen->add_option("--store", options.store, kStoreText)->required();
  return reopen;
}

/// Prints what the library has to say, and returns the exit code.
int finish(const CLI::App &app, const CLI::ParseError &error, int argc, const char *const *argv) {
  std::ostringstream out;
  std::ostringstream complaint;
  const int code = app.exit(error, out, complaint);
  std::cout << out.str();
  std::cerr << withoutUrls(complaint.str(), argc, argv);
  return code == 0 ? 0 : kBadUsage;
}

}  // namespace

std::string withoutUrls(std::string message, int argc, const char *const *argv) {
  constexpr std::string_view kShown = "URL";
  for (std::string_view argument : std::span(argv, static_cast<std::size_t>(argc))) {
    if (argument.starts_with("--")) {
      argument.remove_prefix(argument.find('=') + 1);
    }
    if (argument.find("://") == std::string_view::npos &&
        argument.find("password=") == std::string_view::npos) {
      continue;
    }
    for (auto at = message.find(argument); at != std::string::npos;
         at = message.find(argument, at + kShown.size())) {
      message.replace(at, argument.size(), kShown);
    }
  }
  return message;
}

Command parseCommandLine(int argc, const char *const *argv) {
  CLI::App app("Serves deliveries to pick and takes in what was picked.", "cartonpick-orders");
  app.set_version_flag("--version", "cartonpick-orders " CARTONPICK_VERSION);
  ServeOptions serve;
  LoadOptions load;
  ExportOptions exported;
  ReopenOptions reopened;
  declareServing(app, serve);
  const CLI::App *loading = declareLoading(app, load);
  const CLI::App *exporting = declareExporting(app, exported);
  const CLI::App *reopening = declareReopening(app, reopened);
  app.require_subcommand(0, 1);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    return ExitCode{finish(app, error, argc, argv)};
  }
  if (loading->parsed()) {
    return load;
  }
  if (reopening->parsed()) {
    return reopened;
  }
  return exporting->parsed() ? Command(exported) : Command(serve);
}

}  // namespace cartonpick::orders
