#pragma once

#include "http/http_message.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace cartonpick::orders {

/// Answers requests over HTTP from construction to destruction. Only a request that has arrived as
/// a whole takes a thread.
class HttpServer {
 public:
  /// For how long a request's arrival or its answer's departure may stall.
  static constexpr auto kStallTimeout = std::chrono::seconds(10);

  /// Port 0 takes any free one. `onFailure` is called, from another thread, when the server can no
  /// longer accept connections. Throws std::runtime_error when address and port can't be listened
  /// on.
  HttpServer(const Handler &handler, const std::string &address, std::uint16_t port,
             std::function<void()> onFailure,
             std::chrono::milliseconds stallTimeout = kStallTimeout);
  HttpServer(const HttpServer &) = delete;
  HttpServer &operator=(const HttpServer &) = delete;

  /// Stops accepting, and returns when the requests that are under way have been answered.
  ~HttpServer();

  std::uint16_t port() const { return m_port; }

 private:
  class Server;

  std::unique_ptr<Server> m_server;
  std::uint16_t m_port;
  std::jthread m_acceptor;
};

}  // namespace cartonpick::orders
