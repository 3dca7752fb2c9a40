#pragma once

#include "http/client_address.h"
#include "http/http_limits.h"
#include "http/http_message.h"
#include "http/metrics.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace cartonpick::orders {

/// Which threads answer a request. Each pool has its own, so that none keeps another waiting.
enum class RequestPool {
  None,     ///< the thread that serves all connections: for what takes microseconds
  Lookups,  ///< lookups, the catalogue and the pages
  Sends,
  Probes,  ///< checks of the store
};

/// How many threads the pools have in all: no more requests use the store at once.
inline constexpr std::size_t kLookupThreads = 8;
inline constexpr std::size_t kSendThreads = 16;
inline constexpr std::size_t kProbeThreads = 2;

struct HttpSettings {
  std::string address = "127.0.0.1";  ///< an IP address, or a name of this machine
  std::uint16_t port = 0;             ///< 0: any free one
  TrustedProxies trustedProxies = TrustedProxies();
  HttpLimits limits = {};
};

/// The callbacks of the server. All except `answer` are called from the thread that serves the
/// connections, and must not block.
struct HttpHandlers {
  Handler answer;
  std::function<RequestPool(const Request &)> poolOf = [](const Request &) {
    return RequestPool::Lookups;
  };
  /// The server itself has refused a request, of which there may be a part only.
  std::function<void(const Request &, const Answer &)> refused = [](const Request &,
                                                                    const Answer &) {};
  /// The server can no longer accept connections.
  std::function<void()> failed = [] {};
  /// Called ten times a second while the server serves its connections.
  std::function<void()> turned = [] {};
};

/// Answers requests over HTTP/1.1 from construction to destruction. One thread serves all
/// connections and never waits for a handler; only a complete request takes one of the threads that
/// call `answer`. Connections are kept; requests that follow each other without waiting for the
/// answers are answered in their order.
class HttpServer {
 public:
  /// The metrics must outlive the server. Throws std::runtime_error when the server cannot listen
  /// on address and port.
  HttpServer(HttpSettings settings, HttpHandlers handlers, Metrics &metrics);
  HttpServer(const HttpServer &) = delete;
  HttpServer &operator=(const HttpServer &) = delete;

  /// Stops, and returns when all calls of `answer` have returned.
  ~HttpServer();

  std::uint16_t port() const;

  /// Accepts no more connections, and answers the requests under way within HttpLimits::stop, those
  /// that take longer with status 503. Returns false if calls of `answer` have not returned then.
  bool stop();

 private:
  class Server;

  std::unique_ptr<Server> m_server;
};

}  // namespace cartonpick::orders
