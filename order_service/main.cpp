#include "command_line.h"
#include "delivery_file.h"
#include "demo_deliveries.h"
#include "http_server.h"
#include "order_service.h"
#include "sqlite_sent_pickings.h"
#include "stop_request.h"

#include <atomic>
#include <csignal>
#include <exception>
#include <iostream>
#include <unistd.h>

namespace {

using namespace cartonpick::orders;

int serve(const Options &options) {
  const StopRequest stop(options.exitWithParent);
  const Deliveries deliveries =
      options.deliveriesFile ? readDeliveryFile(*options.deliveriesFile) : demoDeliveries();
  SqliteSentPickings sent(options.storeFile.value_or(SqliteSentPickings::kInMemory));
  const OrderService service(deliveries, sent);
  std::atomic_bool hasFailed = false;
  const HttpServer server(service, options.bindAddress, options.port, [&hasFailed] {
    hasFailed = true;
    ::kill(::getpid(), SIGTERM);
  });
  std::cout << server.port() << std::endl;
  stop.wait();
  return hasFailed ? 1 : 0;
}

}  // namespace

int main(int argc, char **argv) {
  try {
    const auto parsed = parseCommandLine(argc, argv);
    if (const auto *exitCode = std::get_if<ExitCode>(&parsed)) {
      return exitCode->value;
    }
    return serve(std::get<Options>(parsed));
  } catch (const std::exception &error) {
    std::cerr << "cartonpick-orders: " << error.what() << '\n';
    return 1;
  }
}
