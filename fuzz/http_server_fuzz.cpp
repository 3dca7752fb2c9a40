// Sends arbitrary bytes to the order service's HTTP server over a loopback socket. The server must
// answer each request in HTTP or close the connection, and keep serving other clients.

#include "Property.h"
#include "http/http_server.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using namespace cartonpick::orders;

constexpr std::string_view kAnswer = "what the service says";
constexpr std::string_view kSign = "Sign: handled\r\n";
constexpr std::string_view kOrdinaryRequest =
    "GET /healthz HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n";

std::atomic_int s_requests = 0;

Answer answerTo(const Request &request) {
  ++s_requests;
  require(!request.method.empty() && !request.target.empty(), "a request has method and target");
  Answer answer = textAnswer(200, std::string(kAnswer));
  // Marks the answer in its head, because an answer to HEAD has no body.
  answer.headers.emplace_back("Sign", "handled");
  return answer;
}

const HttpServer &server() {
  static Metrics metrics;
  static const HttpServer kServer({}, {.answer = answerTo, .failed = [] { std::abort(); }},
                                  metrics);
  return kServer;
}

class Connection {
 public:
  explicit Connection(std::uint16_t port)
      : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    // Closing with a reset avoids TIME_WAIT, which would use up the ports.
    const linger atOnce = {.l_onoff = 1, .l_linger = 0};
    ::setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const auto connect = [&] {
      return ::connect(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    };
    int outcome = connect();
    // libFuzzer's timer signal interrupts connect(); the connection is still being established.
    while (outcome != 0 && (errno == EINTR || errno == EALREADY)) {
      outcome = connect();
    }
    require(outcome == 0 || errno == EISCONN, "the server takes a connection");
  }
  Connection(const Connection &) = delete;
  Connection &operator=(const Connection &) = delete;
  ~Connection() { ::close(m_socket); }

  void sendAll(std::string_view bytes) const {
    // Errors are ignored: the server can close the connection before it has read everything.
    static_cast<void>(::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL));
  }

  /// Sends `bytes` and closes the sending direction.
  void send(std::string_view bytes) const {
    sendAll(bytes);
    ::shutdown(m_socket, SHUT_WR);
  }

  /// Returns the bytes received until the server closes the connection.
  [[nodiscard]] std::string receive() const {
    std::string received;
    std::array<char, 4096> buffer{};
    while (true) {
      const ssize_t size = ::recv(m_socket, buffer.data(), buffer.size(), 0);
      // EINTR: libFuzzer's timer signal.
      if (size == 0 || (size < 0 && errno != EINTR)) {
        return received;
      }
      received.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    }
  }

 private:
  int m_socket;
};

std::string exchange(std::string_view bytes) {
  const Connection connection(server().port());
  connection.send(bytes);
  return connection.receive();
}

/// Returns true if an ordinary request gets its answer.
bool isServed() {
  const Connection connection(server().port());
  connection.sendAll(kOrdinaryRequest);
  return connection.receive().ends_with(kAnswer);
}

int timesIn(std::string_view text, std::string_view part) {
  int times = 0;
  for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
    ++times;
  }
  return times;
}

bool isHttp(std::string_view answer) {
  constexpr std::string_view kVersion = "HTTP/1.1 ";
  return answer.empty() || (answer.starts_with(kVersion) && answer.size() > kVersion.size() + 3 &&
                            answer.find("\r\n\r\n") != std::string_view::npos);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const int before = s_requests;
  const std::string answer = exchange({reinterpret_cast<const char *>(data), size});
  require(isHttp(answer), "an answer is HTTP");
  require(timesIn(answer, kSign) == s_requests - before, "each request is answered once");
  require(isServed(), "others are served as before");
  return 0;
}
