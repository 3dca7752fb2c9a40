#pragma once

#include "http/client_waits.h"
#include "http/http_response.h"
#include "http/http_server.h"
#include "http/io_types.h"
#include "http/request_parser.h"
#include "http/worker_pool.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <chrono>
#include <memory>
#include <string>
#include <unordered_set>

namespace cartonpick::orders {

class Connection;
struct RequestTask;

/// What the connections of a server share; for the thread that serves them.
struct ConnectionContext {
  using Clock = io::Clock;

  const HttpSettings &settings;
  const HttpHandlers &handlers;
  Metrics &metrics;
  std::function<WorkerPool &(RequestPool)> pool;
  std::function<std::string()> nextRequestId;
  ClientWaits waits;
  std::unordered_set<Connection *> connections = {};
  /// When the last answer has to be sent; far away until the server stops.
  Clock::time_point end = Clock::time_point::max();

  bool isStopping() const { return end != Clock::time_point::max(); }
};

/// One connection: receives a request, has it answered, sends the answer, and begins again.
class Connection : public std::enable_shared_from_this<Connection> {
 public:
  using Clock = io::Clock;

  /// The context must outlive the connection.
  Connection(io::Socket socket, const boost::asio::ip::address &client, ConnectionContext &context);
  Connection(const Connection &) = delete;
  Connection &operator=(const Connection &) = delete;
  ~Connection();

  /// Keeps the connection alive until it is closed.
  void start();

  /// Ends what lasts too long at that time.
  void checkDeadline(Clock::time_point now);

  /// Closes the connection soon if it is idle or receives a request, and at ConnectionContext::end
  /// if it answers one.
  void stop();

 private:
  enum class Phase { Idle, Receiving, Answering, Sending };

  io::Awaitable<void> run();
  io::Awaitable<bool> serveRequest();
  io::Awaitable<void> receive(RequestParser &parser);
  io::Awaitable<void> sendContinue();
  io::Awaitable<Answer> answer(std::shared_ptr<RequestTask> task);
  io::Awaitable<void> waitFor(const RequestTask &task, std::chrono::milliseconds limit);
  io::Awaitable<void> refuse(RequestParser &parser);
  io::Awaitable<bool> send(Answer answer, const std::string &requestId, ResponseTraits traits);
  io::Awaitable<void> discardRest();

  Answer unavailable(const Request &request, const std::string &reason, const std::string &text);
  void complete(RequestParser &parser) const;
  void begin(Phase phase, std::chrono::milliseconds limit);
  void wake();
  void drop();

  ConnectionContext &m_context;
  io::Socket m_socket;
  boost::asio::ip::address m_address;
  bool m_isTrusted = false;
  boost::beast::flat_buffer m_buffer;
  io::Timer m_wakeUp;
  Phase m_phase = Phase::Idle;
  Clock::time_point m_deadline = Clock::time_point::max();
  bool m_hasServed = false;
  bool m_isExpired = false;
  bool m_isDropped = false;
};

}  // namespace cartonpick::orders
