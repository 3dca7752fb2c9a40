#include "command_line.h"
#include "demo/demo_deliveries.h"
#include "error_log.h"
#include "files/delivery_file.h"
#include "files/export_lines.h"
#include "http/http_server.h"
#include "model/last_reports.h"
#include "stop_request.h"
#include "store/sql_store.h"
#include "store/store_error.h"
#include "systemd_notifier.h"
#include "web_service.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <sys/resource.h>
#include <unistd.h>

namespace {

using namespace cartonpick::orders;

/// No client waits for a command, and an export may be large.
constexpr StoreLimits kCommandLimits = {.lock = std::chrono::seconds(30),
                                        .statement = std::chrono::hours(1),
                                        .call = std::chrono::hours(1)};

/// The deliveries to serve in place of those of the store, if there are such.
std::optional<Deliveries> deliveriesOf(const ServeOptions &options) {
  if (options.deliveriesFile) {
    return readDeliveryFile(*options.deliveriesFile);
  }
  return options.demo || !options.store ? std::optional(demoDeliveries()) : std::nullopt;
}

/// Has a connection for each thread that answers requests.
StoreLimits limitsOf(const ServeOptions &options) {
  StoreLimits limits = StoreLimits::within(options.storeTimeout);
  limits.readers = kLookupThreads;
  limits.writers = kSendThreads;
  limits.probes = kProbeThreads;
  return limits;
}

std::unique_ptr<SqlStore> openStore(const SqlAddress &address, const ServeOptions &options,
                                    const std::optional<Deliveries> &deliveries) {
  auto store = std::make_unique<SqlStore>(address, limitsOf(options));
  store->updateSearch();
  if (deliveries) {
    store->replace(*deliveries);
  }
  return store;
}

/// Waits for a database that is away, which another machine or unit may start later. Returns null
/// if the stop is requested meanwhile.
std::unique_ptr<SqlStore> waitForStore(const ServeOptions &options, const StopRequest &stop,
                                       ErrorLog &errors) {
  constexpr auto kRetry = std::chrono::seconds(1);
  const SqlAddress address(options.store.value_or(SqlAddress::kInMemory));
  const std::optional<Deliveries> deliveries = deliveriesOf(options);
  const auto end = std::chrono::steady_clock::now() + options.storeWait;
  do {
    try {
      return openStore(address, options, deliveries);
    } catch (const StoreUnavailable &error) {
      if (address.dialect() == SqlDialect::Sqlite || std::chrono::steady_clock::now() >= end) {
        throw;
      }
      errors.write(std::string(error.what()) + "; trying again");
    }
  } while (!stop.waitFor(kRetry));
  return nullptr;
}

bool isLoopback(const std::string &address) {
  return address == "localhost" || address == "::1" || address.starts_with("127.");
}

AccessGuard guardOf(const ServeOptions &options) {
  if (options.tokenFile) {
    return AccessGuard(readTokens(*options.tokenFile));
  }
  return {std::nullopt, isLoopback(options.bindAddress)};
}

HttpHandlers handlersOf(WebService &service, SystemdNotifier &systemd,
                        const std::function<void()> &fail) {
  return {.answer = [&service](const Request &request) { return service.answer(request); },
          .poolOf = WebService::poolOf,
          .refused = [&service](const Request &request,
                                const Answer &answer) { service.logRefusal(request, answer); },
          .failed = fail,
          .turned = [&systemd] { systemd.keepAlive(); }};
}

/// Each connection takes a file descriptor, of which a process may have 1,024 by default.
void allowManyFiles() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) == 0) {
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);
  }
}

int run(const ServeOptions &options) {
  // A log that is no longer read must not end the service.
  std::signal(SIGPIPE, SIG_IGN);
  const StopRequest stop(options.exitWithParent);
  ErrorLog errors(std::cerr);
  const std::unique_ptr<SqlStore> store = waitForStore(options, stop, errors);
  if (!store) {
    return 0;
  }
  RequestLog log(std::cerr);
  WebService service(*store, guardOf(options), options.logsRequests ? &log : nullptr, &errors);
  SystemdNotifier systemd;
  std::atomic_bool hasFailed = false;
  const auto fail = [&hasFailed] {
    hasFailed = true;
    ::kill(::getpid(), SIGTERM);
  };
  allowManyFiles();
  HttpServer server({.address = options.bindAddress,
                     .port = options.port,
                     .trustedProxies = TrustedProxies(options.trustedProxies),
                     .limits = options.limits},
                    handlersOf(service, systemd, fail), service.metrics());
  std::cout << server.port() << std::endl;
  systemd.ready();
  stop.wait();
  systemd.stopping();
  if (!server.stop()) {
    // Their threads wait for the store, by --store-timeout for longer than a stop may take.
    std::cerr << "cartonpick-orders: the store does not answer; requests have got status 503\n";
    std::_Exit(hasFailed ? 1 : 0);
  }
  return hasFailed ? 1 : 0;
}

int run(const LoadOptions &options) {
  const Deliveries deliveries = readDeliveryFile(options.file);
  SqlStore(SqlAddress(options.store), kCommandLimits).load(deliveries);
  std::cout << deliveries.all().size() << " deliveries loaded" << std::endl;
  return 0;
}

/// To export from a store that is not there, or to reopen one's delivery, is a mistake.
SqlAddress existingStore(const std::string &store) {
  SqlAddress address(store);
  if (address.dialect() == SqlDialect::Sqlite && !std::filesystem::exists(store)) {
    throw std::runtime_error("there is no store " + store);
  }
  return address;
}

int run(const ExportOptions &options) {
  const auto reports =
      SqlStore(existingStore(options.store), kCommandLimits).picked(options.filter);
  const auto lines = options.allReports ? reports : lastReports(reports);
  if (lines.empty()) {
    std::cerr << "cartonpick-orders: nothing was picked\n";
  }
  options.format == ExportFormat::Json ? writeJson(lines, std::cout) : writeCsv(lines, std::cout);
  std::cout.flush();
  return std::cout ? 0 : 1;
}

int run(const ReopenOptions &options) {
  if (!SqlStore(existingStore(options.store), kCommandLimits).reopen(options.delivery)) {
    throw std::runtime_error("delivery " + options.delivery + " has not been sent");
  }
  std::cout << "delivery " << options.delivery << " reopened" << std::endl;
  return 0;
}

int run(const ExitCode &code) {
  return code.value;
}

}  // namespace

int main(int argc, char **argv) {
  try {
    return std::visit([](const auto &command) { return run(command); },
                      parseCommandLine(argc, argv));
  } catch (const std::exception &error) {
    std::cerr << "cartonpick-orders: " << withoutUrls(error.what(), argc, argv) << '\n';
    return 1;
  }
}
