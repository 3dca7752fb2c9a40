#include "http/http_server.h"

#include "http/lobby.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <httplib.h>
#include <mutex>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace cartonpick::orders {

namespace {

constexpr std::size_t kMaxBodyBytes = IncomingRequest::kMaxBodyBytes;
constexpr std::size_t kThreads = 16;

/// How many requests may wait for a thread, and how much memory they may take; more wait with the
/// system, which has its own limit.
constexpr std::size_t kMaxWaiting = 500;
constexpr std::size_t kMaxWaitingBytes = 16 * kMaxBodyBytes;

/// The same for connections whose requests are not whole.
constexpr std::size_t kMaxIncomplete = 400;
constexpr std::size_t kMaxIncompleteBytes = 16 * kMaxBodyBytes;

/// For how long an answer may take to depart: no tablet waits longer.
constexpr auto kMaxDeparture = std::chrono::seconds(150);

/// A pool of threads that takes no more work than it is told.
class Workers {
 public:
  Workers() : m_pool(kThreads) {}
  Workers(const Workers &) = delete;
  Workers &operator=(const Workers &) = delete;
  /// Returns when all work is done.
  ~Workers() { m_pool.shutdown(); }

  /// Waits until there is room for work that takes `bytes` of memory.
  void enqueue(std::function<void()> work, std::size_t bytes) {
    std::unique_lock lock(m_mutex);
    m_hasRoom.wait(lock, [&] {
      return m_underWay == 0 ||
             (m_underWay < kThreads + kMaxWaiting && m_underWayBytes + bytes <= kMaxWaitingBytes);
    });
    ++m_underWay;
    m_underWayBytes += bytes;
    m_pool.enqueue([this, work = std::move(work), bytes] {
      work();
      const std::lock_guard done(m_mutex);
      --m_underWay;
      m_underWayBytes -= bytes;
      m_hasRoom.notify_one();
    });
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_hasRoom;
  std::size_t m_underWay = 0;
  std::size_t m_underWayBytes = 0;
  /// The last member: its work uses the others.
  httplib::ThreadPool m_pool;
};

/// What the library reads is what has arrived; what it writes departs.
class Connection : public httplib::Stream {
 public:
  Connection(int socket, std::string request)
      : m_socket(socket), m_request(std::move(request)), m_end(Clock::now() + kMaxDeparture) {}
  Connection(const Connection &) = delete;
  Connection &operator=(const Connection &) = delete;
  ~Connection() override {
    ::shutdown(m_socket, SHUT_RDWR);
    ::close(m_socket);
  }

  bool is_readable() const override { return m_position < m_request.size(); }
  bool is_writable() const override { return Clock::now() < m_end; }

  ssize_t read(char *bytes, std::size_t size) override {
    const std::size_t count = m_request.copy(bytes, size, m_position);
    m_position += count;
    return static_cast<ssize_t>(count);
  }
  /// The socket itself says when it stalls.
  ssize_t write(const char *bytes, std::size_t size) override {
    return is_writable() ? ::send(m_socket, bytes, size, MSG_NOSIGNAL) : -1;
  }

  void get_remote_ip_and_port(std::string & /*ip*/, int & /*port*/) const override {}
  void get_local_ip_and_port(std::string & /*ip*/, int & /*port*/) const override {}
  /// None: the library would only compare it to how many it can wait for.
  socket_t socket() const override { return -1; }

 private:
  using Clock = std::chrono::steady_clock;

  int m_socket;
  std::string m_request;
  std::size_t m_position = 0;
  Clock::time_point m_end;
};

/// Has the library's acceptor hand on every connection at once.
class Threshold : public httplib::TaskQueue {
 public:
  void enqueue(std::function<void()> work) override { work(); }
  void shutdown() override {}
};

void copyTo(httplib::Response &response, const Answer &answer) {
  // A status of 200 is left to the library, which makes it 206 when a range was asked for.
  if (answer.status != 200) {
    response.status = answer.status;
  }
  if (answer.allow) {
    response.set_header("Allow", *answer.allow);
  }
  for (const auto &[name, value] : answer.headers) {
    response.set_header(name, value);
  }
  response.set_content(answer.body, answer.contentType);
}

Request toRequest(const httplib::Request &request, std::string body) {
  return {.method = request.method,
          .target = request.target,
          .contentType = request.get_header_value("Content-Type"),
          .body = std::move(body),
          .authorization = request.get_header_value("Authorization"),
          .cookie = request.get_header_value("Cookie"),
          .host = request.get_header_value("Host"),
          .origin = request.get_header_value("Origin")};
}

bool skipMultipart(const httplib::ContentReader &read) {
  return read([](const httplib::MultipartFormData &) { return true; },
              [](const char *, std::size_t) { return true; });
}

/// Reads the whole body, which may be compressed: the library limits what is sent, and this what it
/// becomes. Returns whether that went well, else sets the response's status. A multipart body,
/// which the library would not hand out whole and no call wants, is skipped.
bool readBody(const httplib::Request &request, httplib::Response &response,
              const httplib::ContentReader &read, std::string &body) {
  if (request.is_multipart_form_data()) {
    return skipMultipart(read);
  }
  bool isTooLarge = false;
  const bool isRead = read([&](const char *data, std::size_t size) {
    isTooLarge = body.size() + size > kMaxBodyBytes;
    if (!isTooLarge) {
      body.append(data, size);
    }
    return !isTooLarge;
  });
  if (isTooLarge) {
    response.status = 413;
  }
  return isRead;
}

bool hasBody(const httplib::Request &request) {
  return request.method == "POST" || request.method == "PUT" || request.method == "PATCH" ||
         request.method == "DELETE";
}

std::string textOf(int status) {
  switch (status) {
    case 413:
      return "the body is larger than 16 MiB";
    case 414:
      return "the URL is too long";
    default:
      return "the request is not HTTP as it should be, or cut short";
  }
}

void setLimits(httplib::Server &server, std::chrono::milliseconds stallTimeout) {
  server.set_payload_max_length(kMaxBodyBytes);
  server.set_write_timeout(stallTimeout);
  server.new_task_queue = [] { return std::make_unique<Threshold>().release(); };
}

void setErrorTexts(httplib::Server &server) {
  server.set_error_handler([](const httplib::Request &, httplib::Response &response) {
    if (response.body.empty()) {
      copyTo(response, textAnswer(response.status, textOf(response.status)));
    }
  });
  server.set_exception_handler(
      [](const httplib::Request &, httplib::Response &response, const std::exception_ptr &thrown) {
        try {
          std::rethrow_exception(thrown);
        } catch (const std::exception &error) {
          copyTo(response, textAnswer(500, error.what()));
        }
      });
}

/// Hands every request on, whatever its path. The library routes by regular
/// expressions, which would take a stack frame a character, so requests without a body bypass its
/// routes.
void setRoutes(httplib::Server &server, const Handler &handler) {
  using Handled = httplib::Server::HandlerResponse;
  server.set_pre_routing_handler(
      [handler](const httplib::Request &request, httplib::Response &response) {
        // The library cuts off a fragment, which may be all there is.
        if (request.target.empty()) {
          response.status = 400;
          return Handled::Handled;
        }
        if (hasBody(request)) {
          return Handled::Unhandled;
        }
        copyTo(response, handler(toRequest(request, {})));
        return Handled::Handled;
      });
  const auto answerWithBody = [handler](const httplib::Request &request,
                                        httplib::Response &response,
                                        const httplib::ContentReader &read) {
    std::string body;
    if (readBody(request, response, read, body)) {
      copyTo(response, handler(toRequest(request, std::move(body))));
    }
  };
  const std::string anyPath = R"([\s\S]*)";
  server.Post(anyPath, answerWithBody);
  server.Put(anyPath, answerWithBody);
  server.Patch(anyPath, answerWithBody);
  server.Delete(anyPath, answerWithBody);
}

/// Binds the server and returns its port; 0 when that can't be.
int tryToBind(httplib::Server &server, const std::string &address, std::uint16_t port) {
  if (port == 0) {
    return std::max(server.bind_to_any_port(address), 0);
  }
  return server.bind_to_port(address, port) ? port : 0;
}

std::uint16_t listenAt(httplib::Server &server, const std::string &address, std::uint16_t port) {
  const auto listener = std::make_shared<socket_t>(-1);
  server.set_socket_options([listener](socket_t socket) {
    // The library's default would let a second service share the port.
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    *listener = socket;
  });
  const int bound = tryToBind(server, address, port);
  if (bound == 0) {
    throw std::runtime_error("can't listen on " + address + " port " + std::to_string(port));
  }
  // The library lets five connections wait to be accepted; each one more would lose a second.
  ::listen(*listener, SOMAXCONN);
  return static_cast<std::uint16_t>(bound);
}

}  // namespace

/// The library's server, for requests that have arrived.
class HttpServer::Server : public httplib::Server {
 public:
  explicit Server(std::chrono::milliseconds stallTimeout)
      : m_lobby({stallTimeout, kMaxIncomplete, kMaxIncompleteBytes},
                [this](int socket, std::string request) { answer(socket, std::move(request)); }) {}

 private:
  bool process_and_close_socket(socket_t socket) override {
    m_lobby.enter(socket);
    return true;
  }

  void answer(int socket, std::string request) {
    const std::size_t bytes = request.size();
    const auto connection = std::make_shared<Connection>(socket, std::move(request));
    m_workers.enqueue(
        [this, connection] {
          // One request a connection: nothing waits for a next one.
          bool isClosed = false;
          process_request(*connection, true, isClosed, nullptr);
        },
        bytes);
  }

  Workers m_workers;
  /// The last member: it uses the workers.
  Lobby m_lobby;
};

HttpServer::HttpServer(const Handler &handler, const std::string &address, std::uint16_t port,
                       std::function<void()> onFailure, std::chrono::milliseconds stallTimeout)
    : m_server(std::make_unique<Server>(stallTimeout)) {
  setLimits(*m_server, stallTimeout);
  setErrorTexts(*m_server);
  setRoutes(*m_server, handler);
  m_port = listenAt(*m_server, address, port);
  m_acceptor = std::jthread([server = m_server.get(), onFailure = std::move(onFailure)] {
    if (!server->listen_after_bind()) {
      onFailure();
    }
  });
  // A stop that comes before the server runs would be lost.
  while (!m_server->is_running()) {
    std::this_thread::yield();
  }
}

HttpServer::~HttpServer() {
  m_server->stop();
}

}  // namespace cartonpick::orders
