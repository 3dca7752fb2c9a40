#include "command_line.h"
#include "demo/demo_deliveries.h"
#include "files/delivery_file.h"
#include "files/export_lines.h"
#include "http/http_server.h"
#include "model/last_reports.h"
#include "stop_request.h"
#include "store/sql_store.h"
#include "systemd_notifier.h"
#include "web_service.h"

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <sys/resource.h>
#include <unistd.h>

namespace {

using namespace cartonpick::orders;

void fill(SqlStore &store, const ServeOptions &options) {
  if (options.deliveriesFile) {
    store.replace(readDeliveryFile(*options.deliveriesFile));
  } else if (options.demo || !options.store) {
    store.replace(demoDeliveries());
  }
}

bool isLoopback(const std::string &address) {
  return address == "localhost" || address == "::1" || address.starts_with("127.");
}

AccessGuard guardOf(const ServeOptions &options) {
  const auto token =
      options.tokenFile ? std::optional(readToken(*options.tokenFile)) : std::nullopt;
  return {token, isLoopback(options.bindAddress)};
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
  const StopRequest stop(options.exitWithParent);
  SqlStore store(SqlAddress(options.store.value_or(SqlAddress::kInMemory)));
  fill(store, options);
  RequestLog log(std::cerr);
  WebService service(store, guardOf(options), options.logsRequests ? &log : nullptr);
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
    // Their threads wait for the store, which nothing can interrupt.
    std::cerr << "cartonpick-orders: the store does not answer; requests have got status 503\n";
    std::_Exit(hasFailed ? 1 : 0);
  }
  return hasFailed ? 1 : 0;
}

int run(const LoadOptions &options) {
  const Deliveries deliveries = readDeliveryFile(options.file);
  SqlStore(SqlAddress(options.store)).load(deliveries);
  std::cout << deliveries.all().size() << " deliveries loaded" << std::endl;
  return 0;
}

/// To export from a store that is not there is a mistake, not a reason to make one.
SqlAddress existingStore(const std::string &store) {
  SqlAddress address(store);
  if (address.dialect == SqlDialect::Sqlite && !std::filesystem::exists(store)) {
    throw std::runtime_error("there is no store " + store);
  }
  return address;
}

int run(const ExportOptions &options) {
  const auto reports = SqlStore(existingStore(options.store)).picked(options.filter);
  const auto lines = options.allReports ? reports : lastReports(reports);
  if (lines.empty()) {
    std::cerr << "cartonpick-orders: nothing was picked\n";
  }
  options.format == ExportFormat::Json ? writeJson(lines, std::cout) : writeCsv(lines, std::cout);
  std::cout.flush();
  return std::cout ? 0 : 1;
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
    std::cerr << "cartonpick-orders: " << error.what() << '\n';
    return 1;
  }
}
