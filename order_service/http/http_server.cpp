#include "http/http_server.h"

#include "http/connection.h"

#include <array>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/post.hpp>
#include <cstdio>
#include <future>
#include <random>
#include <stdexcept>
#include <thread>

namespace cartonpick::orders {

namespace {

namespace asio = boost::asio;

using io::Error;
using io::into;
using io::Tcp;

/// How often deadlines are checked.
constexpr std::chrono::milliseconds kTurn(100);

/// Returns true if the next connection may be accepted all the same.
bool isPassing(const Error &error) {
  return error == asio::error::connection_aborted || error == asio::error::connection_reset ||
         error == asio::error::no_descriptors || error == asio::error::no_memory ||
         error == asio::error::no_buffer_space ||
         error == boost::system::errc::too_many_files_open_in_system ||
         error == asio::error::interrupted || error == asio::error::try_again;
}

io::Acceptor acceptorAt(asio::io_context &context, const HttpSettings &settings) {
  Error error;
  const auto endpoints = Tcp::resolver(context).resolve(
      settings.address, std::to_string(settings.port),
      Tcp::resolver::passive | Tcp::resolver::numeric_service, error);
  for (const auto &entry : endpoints) {
    io::Acceptor acceptor(context);
    acceptor.open(entry.endpoint().protocol(), error);
    if (!error) {
      acceptor.set_option(io::Acceptor::reuse_address(true), error);
      acceptor.bind(entry.endpoint(), error);
    }
    if (!error) {
      acceptor.listen(asio::socket_base::max_listen_connections, error);
    }
    if (!error) {
      return acceptor;
    }
  }
  throw std::runtime_error("can't listen on " + settings.address + " port " +
                           std::to_string(settings.port));
}

/// Numbers requests, so that those of two processes differ.
class RequestIds {
 public:
  std::string next() {
    constexpr std::size_t kMaxBytes = 40;
    std::array<char, kMaxBytes> text{};
    std::snprintf(text.data(), text.size(), "%08x-%llx", m_process, ++m_count);
    return text.data();
  }

 private:
  unsigned m_process = std::random_device()();
  unsigned long long m_count = 0;
};

}  // namespace

class HttpServer::Server {
 public:
  Server(HttpSettings settings, HttpHandlers handlers, Metrics &metrics)
      : m_settings(std::move(settings)),
        m_handlers(std::move(handlers)),
        m_context{.settings = m_settings,
                  .handlers = m_handlers,
                  .metrics = metrics,
                  .pool = [this](RequestPool pool) -> WorkerPool & { return poolOf(pool); },
                  .nextRequestId = [this] { return m_requestIds.next(); },
                  .waits = ClientWaits({.ofOneAddress = m_settings.limits.waitingOfOneAddress,
                                        .bytes = m_settings.limits.waitingBytes})},
        m_acceptor(acceptorAt(m_io, m_settings)),
        m_port(m_acceptor.local_endpoint().port()),
        m_retry(m_io),
        m_turn(m_io),
        m_lookups("lookups", limitsOf(kLookupThreads), metrics),
        m_sends("sends", limitsOf(kSendThreads), metrics),
        m_probes("probes", limitsOf(kProbeThreads), metrics) {
    asio::co_spawn(m_io, accept(), asio::detached);
    asio::co_spawn(m_io, turn(), asio::detached);
    m_thread = std::jthread([this] { m_io.run(); });
  }
  Server(const Server &) = delete;
  Server &operator=(const Server &) = delete;
  ~Server() { stop(); }

  std::uint16_t port() const { return m_port; }

  bool stop() {
    if (m_thread.joinable()) {
      asio::post(m_io, [this] { beginStop(); });
      m_thread.join();
    }
    return m_lookups.isIdle() && m_sends.isIdle() && m_probes.isIdle();
  }

 private:
  WorkerPool::Limits limitsOf(std::size_t threads) const {
    return {threads, m_settings.limits.queuedRequests, m_settings.limits.queuedBytes};
  }

  WorkerPool &poolOf(RequestPool pool) {
    return pool == RequestPool::Sends    ? m_sends
           : pool == RequestPool::Probes ? m_probes
                                         : m_lookups;
  }

  io::Awaitable<void> accept() {
    while (!m_context.isStopping()) {
      io::Socket socket(m_io);
      Tcp::endpoint client;
      Error error;
      co_await m_acceptor.async_accept(socket, client, into(error));
      if (m_context.isStopping()) {
        co_return;
      }
      if (!error) {
        start(std::move(socket), client.address());
      } else if (isPassing(error)) {
        // There may be too few descriptors: a connection that waits for its client gives one back.
        m_context.waits.dropLongest();
        m_retry.expires_after(kTurn);
        co_await m_retry.async_wait(into(error));
      } else {
        m_handlers.failed();
        co_return;
      }
    }
  }

  void start(io::Socket socket, const asio::ip::address &client) {
    if (m_context.connections.size() >= m_settings.limits.connections &&
        !m_context.waits.dropLongest()) {
      m_context.metrics.countRefusal("connections");
      return;
    }
    std::make_shared<Connection>(std::move(socket), client, m_context)->start();
  }

  io::Awaitable<void> turn() {
    while (!m_context.isStopping() || !m_context.connections.empty()) {
      m_handlers.turned();
      const auto now = std::chrono::steady_clock::now();
      for (Connection *connection : m_context.connections) {
        connection->checkDeadline(now);
      }
      Error error;
      m_turn.expires_after(kTurn);
      co_await m_turn.async_wait(into(error));
    }
  }

  void beginStop() {
    m_context.end = std::chrono::steady_clock::now() + m_settings.limits.stop;
    Error error;
    m_acceptor.close(error);
    m_retry.cancel();
    m_turn.cancel();
    for (Connection *connection : m_context.connections) {
      connection->stop();
    }
  }

  HttpSettings m_settings;
  HttpHandlers m_handlers;
  RequestIds m_requestIds;
  ConnectionContext m_context;
  asio::io_context m_io{1};
  io::Acceptor m_acceptor;
  std::uint16_t m_port;
  io::Timer m_retry;
  io::Timer m_turn;
  WorkerPool m_lookups;
  WorkerPool m_sends;
  WorkerPool m_probes;
  /// The last member: it uses the others.
  std::jthread m_thread;
};

HttpServer::HttpServer(HttpSettings settings, HttpHandlers handlers, Metrics &metrics)
    : m_server(std::make_unique<Server>(std::move(settings), std::move(handlers), metrics)) {}

HttpServer::~HttpServer() = default;

std::uint16_t HttpServer::port() const {
  return m_server->port();
}

bool HttpServer::stop() {
  return m_server->stop();
}

}  // namespace cartonpick::orders
