#include "http/connection.h"

#include "http/request_task.h"

#include <algorithm>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/serializer.hpp>
#include <boost/beast/http/write.hpp>
#include <cctype>
#include <string_view>

namespace cartonpick::orders {

namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;

using io::Error;
using io::into;

/// How much is received at once.
constexpr std::size_t kFirstRead = 4 * kKibibyte;
constexpr std::size_t kNextRead = 16 * kKibibyte;

/// How much of a refused request is received only so that its client reads the answer.
constexpr std::size_t kMaxDiscarded = 64 * kMebibyte;

/// For how long a request that is being received when the server stops may still arrive.
constexpr std::chrono::seconds kLastArrival(1);

std::string_view viewOf(const boost::beast::flat_buffer &buffer) {
  return {static_cast<const char *>(buffer.data().data()), buffer.size()};
}

bool isRequestId(const std::string &text) {
  constexpr std::size_t kMaxBytes = 64;
  return !text.empty() && text.size() <= kMaxBytes &&
         std::all_of(text.begin(), text.end(), [](unsigned char c) {
           return std::isalnum(c) != 0 || c == '-' || c == '_' || c == '.';
         });
}

}  // namespace

Connection::Connection(io::Socket socket, const asio::ip::address &client,
                       ConnectionContext &context)
    : m_context(context),
      m_socket(std::move(socket)),
      m_address(client),
      m_isTrusted(context.settings.trustedProxies.contains(client)),
      m_wakeUp(m_socket.get_executor(), Clock::time_point::max()) {
  Error error;
  m_socket.set_option(io::Tcp::no_delay(true), error);
  m_context.connections.insert(this);
  m_context.metrics.setConnections(m_context.connections.size());
}

Connection::~Connection() {
  m_context.connections.erase(this);
  m_context.metrics.setConnections(m_context.connections.size());
}

void Connection::start() {
  asio::co_spawn(
      m_socket.get_executor(), [self = shared_from_this()] { return self->run(); }, asio::detached);
}

void Connection::checkDeadline(Clock::time_point now) {
  if (now >= m_deadline && !m_isExpired) {
    m_isExpired = true;
    wake();
  }
}

void Connection::stop() {
  const Clock::time_point now = Clock::now();
  if (m_phase == Phase::Idle && m_hasServed) {
    m_deadline = now;
  } else if (m_phase == Phase::Idle || m_phase == Phase::Receiving) {
    m_deadline = std::min(m_deadline, now + kLastArrival);
  } else {
    m_deadline = std::min(m_deadline, m_context.end);
  }
}

io::Awaitable<void> Connection::run() {
  bool isKept = true;
  while (isKept && !m_context.isStopping()) {
    isKept = co_await serveRequest();
    m_hasServed = true;
  }
}

io::Awaitable<bool> Connection::serveRequest() {
  RequestParser parser(m_context.settings.limits);
  co_await receive(parser);
  if (m_isDropped) {
    co_return false;
  }
  if (parser.refusal()) {
    co_await refuse(parser);
    co_return false;
  }
  if (!parser.isWhole()) {
    co_return false;
  }
  complete(parser);
  ResponseTraits traits = {.isToHead = parser.request().method == "HEAD",
                           .isToHttp10 = parser.isHttp10()};
  auto task = std::make_shared<RequestTask>(RequestTask{.request = std::move(parser.request())});
  Answer answered = co_await answer(task);
  traits.keepsConnection = parser.keepsAlive() && !m_context.isStopping();
  const bool isSent = co_await send(std::move(answered), task->request.id, traits);
  co_return traits.keepsConnection ? isSent : false;
}

io::Awaitable<void> Connection::receive(RequestParser &parser) {
  const HttpLimits &limits = m_context.settings.limits;
  ClientWaits::Wait wait(m_context.waits, m_address, m_isTrusted, [this] {
    m_context.metrics.countRefusal("dropped");
    drop();
  });
  begin(Phase::Idle, limits.idle);
  bool hasContinued = false;
  while (!m_isDropped) {
    m_buffer.consume(parser.read(viewOf(m_buffer)));
    if (parser.isWhole() || parser.refusal()) {
      co_return;
    }
    if (parser.hasBegun() && m_phase == Phase::Idle) {
      begin(Phase::Receiving, m_context.isStopping() ? kLastArrival : limits.request);
    }
    wait.setBytes(m_buffer.size() + parser.heldBytes());
    if (parser.expectsContinue() && !hasContinued) {
      hasContinued = true;
      co_await sendContinue();
    }
    Error error;
    const std::size_t size = co_await m_socket.async_read_some(
        m_buffer.prepare(parser.hasBegun() ? kNextRead : kFirstRead), into(error));
    m_buffer.commit(size);
    if (error && parser.hasBegun()) {
      parser.refuse(m_isExpired ? Refusal{408, "timeout", "the request did not arrive in time"}
                                : Refusal{400, "malformed", "the request is cut short"});
    }
    if (error) {
      co_return;
    }
  }
}

io::Awaitable<void> Connection::sendContinue() {
  constexpr std::string_view kContinue = "HTTP/1.1 100 Continue\r\n\r\n";
  Error error;
  co_await asio::async_write(m_socket, asio::buffer(kContinue.data(), kContinue.size()),
                             into(error));
}

void Connection::complete(RequestParser &parser) const {
  Request &request = parser.request();
  const ForwardingFields &fields = parser.forwarding();
  request.client = m_context.settings.trustedProxies.clientOf(m_address, fields);
  request.id =
      m_isTrusted && isRequestId(fields.requestId) ? fields.requestId : m_context.nextRequestId();
  // Some proxies show themselves by nothing but the old version.
  request.isForwarded = m_isTrusted || parser.isHttp10() || fields.hasOther ||
                        !fields.forwarded.empty() || !fields.forwardedFor.empty();
}

io::Awaitable<Answer> Connection::answer(std::shared_ptr<RequestTask> task) {
  const HttpLimits &limits = m_context.settings.limits;
  const RequestPool kind = m_context.handlers.poolOf(task->request);
  if (kind == RequestPool::None) {
    co_return callHandler(m_context.handlers.answer, task->request);
  }
  WorkerPool &pool = m_context.pool(kind);
  // The job may outlive the connection.
  const std::shared_ptr<const Job> job =
      jobOf(task, m_context.handlers.answer, m_socket.get_executor(), [weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
          self->m_wakeUp.cancel();
        }
      });
  if (!pool.add(job)) {
    co_return unavailable(task->request, "queue_full", "too many requests wait");
  }
  co_await waitFor(*task, limits.queue);
  if (!task->isDone && pool.withdraw(job)) {
    co_return unavailable(task->request, "queue_timeout", "the request has waited too long");
  }
  if (!task->isDone) {
    co_await waitFor(*task, limits.handler);
  }
  if (!task->isDone) {
    co_return unavailable(task->request, "answer_timeout", "the answer takes too long");
  }
  co_return std::move(task->answer);
}

io::Awaitable<void> Connection::waitFor(const RequestTask &task, std::chrono::milliseconds limit) {
  begin(Phase::Answering, limit);
  while (!task.isDone && !m_isExpired) {
    Error error;
    co_await m_wakeUp.async_wait(into(error));
  }
}

Answer Connection::unavailable(const Request &request, const std::string &reason,
                               const std::string &text) {
  m_context.metrics.countRefusal(reason);
  Answer answer = textAnswer(503, text);
  answer.headers.emplace_back("Retry-After", "1");
  m_context.handlers.refused(request, answer);
  return answer;
}

io::Awaitable<void> Connection::refuse(RequestParser &parser) {
  const Refusal refusal = *parser.refusal();
  complete(parser);
  const Request request = std::move(parser.request());
  const Answer answer = textAnswer(refusal.status, refusal.text);
  m_context.metrics.countRefusal(refusal.reason);
  m_context.handlers.refused(request, answer);
  const ResponseTraits traits = {.isToHead = request.method == "HEAD"};
  const bool isSent = co_await send(answer, request.id, traits);
  if (isSent) {
    co_await discardRest();
  }
}

io::Awaitable<bool> Connection::send(Answer answer, const std::string &requestId,
                                     ResponseTraits traits) {
  const HttpLimits &limits = m_context.settings.limits;
  ClientWaits::Wait wait(m_context.waits, m_address, m_isTrusted, [this] {
    m_context.metrics.countRefusal("dropped");
    drop();
  });
  wait.setBytes(answer.body.size());
  const auto response = responseOf(std::move(answer), requestId, traits);
  http::response_serializer<http::string_body> serializer(response);
  const Clock::time_point end = Clock::now() + limits.answer;
  Error error;
  while (!serializer.is_done() && !error && !m_isDropped && Clock::now() < end) {
    begin(Phase::Sending, limits.answerStall);
    co_await http::async_write_some(m_socket, serializer, into(error));
  }
  co_return serializer.is_done() && !error;
}

/// Closing at once would have the system discard the answer that is on its way.
io::Awaitable<void> Connection::discardRest() {
  Error error;
  m_socket.shutdown(io::Socket::shutdown_send, error);
  ClientWaits::Wait wait(m_context.waits, m_address, m_isTrusted, [this] { drop(); });
  begin(Phase::Receiving,
        m_context.isStopping() ? kLastArrival : m_context.settings.limits.answerStall);
  std::size_t discarded = 0;
  while (!error && !m_isDropped && discarded < kMaxDiscarded) {
    m_buffer.clear();
    discarded += co_await m_socket.async_read_some(m_buffer.prepare(kNextRead), into(error));
  }
}

void Connection::begin(Phase phase, std::chrono::milliseconds limit) {
  m_phase = phase;
  m_isExpired = false;
  m_deadline = std::min(Clock::now() + limit, m_context.end);
}

void Connection::wake() {
  Error error;
  m_socket.cancel(error);
  m_wakeUp.cancel();
}

void Connection::drop() {
  m_isDropped = true;
  wake();
}

}  // namespace cartonpick::orders
