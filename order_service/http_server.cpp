#include "http_server.h"

#include <exception>
#include <httplib.h>
#include <stdexcept>
#include <utility>

namespace cartonpick::orders {

namespace {

constexpr std::size_t kMaxBodyBytes = std::size_t{16} * 1024 * 1024;
constexpr std::size_t kThreads = 16;

void copyTo(httplib::Response &response, const Answer &answer) {
  // A status of 200 is left to the library, which makes it 206 when a range was asked for.
  if (answer.status != 200) {
    response.status = answer.status;
  }
  if (answer.allow) {
    response.set_header("Allow", *answer.allow);
  }
  response.set_content(answer.body, answer.contentType);
}

Request toRequest(const httplib::Request &request, std::string body) {
  return {.method = request.method,
          .target = request.target,
          .contentType = request.get_header_value("Content-Type"),
          .body = std::move(body)};
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
  server.set_read_timeout(stallTimeout);
  server.set_write_timeout(stallTimeout);
  // One request a connection: an idle connection would occupy a thread and hold up the end.
  server.set_keep_alive_max_count(1);
  server.new_task_queue = [] { return std::make_unique<httplib::ThreadPool>(kThreads).release(); };
  // The library's default would let a second service share the port.
  server.set_socket_options([](socket_t socket) {
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  });
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

/// Hands every request to the service, whatever its path. The library routes by regular
/// expressions, which would take a stack frame a character, so requests without a body bypass its
/// routes.
void setRoutes(httplib::Server &server, const OrderService &service) {
  using Handled = httplib::Server::HandlerResponse;
  server.set_pre_routing_handler(
      [&service](const httplib::Request &request, httplib::Response &response) {
        if (hasBody(request)) {
          return Handled::Unhandled;
        }
        copyTo(response, service.answer(toRequest(request, {})));
        return Handled::Handled;
      });
  const auto answerWithBody = [&service](const httplib::Request &request,
                                         httplib::Response &response,
                                         const httplib::ContentReader &read) {
    std::string body;
    if (readBody(request, response, read, body)) {
      copyTo(response, service.answer(toRequest(request, std::move(body))));
    }
  };
  const std::string anyPath = R"([\s\S]*)";
  server.Post(anyPath, answerWithBody);
  server.Put(anyPath, answerWithBody);
  server.Patch(anyPath, answerWithBody);
  server.Delete(anyPath, answerWithBody);
}

std::uint16_t bind(httplib::Server &server, const std::string &address, std::uint16_t port) {
  if (port == 0) {
    const int anyPort = server.bind_to_any_port(address);
    if (anyPort > 0) {
      return static_cast<std::uint16_t>(anyPort);
    }
  } else if (server.bind_to_port(address, port)) {
    return port;
  }
  throw std::runtime_error("can't listen on " + address + " port " + std::to_string(port));
}

}  // namespace

HttpServer::HttpServer(const OrderService &service, const std::string &address, std::uint16_t port,
                       std::function<void()> onFailure, std::chrono::milliseconds stallTimeout)
    : m_server(std::make_unique<httplib::Server>()) {
  setLimits(*m_server, stallTimeout);
  setErrorTexts(*m_server);
  setRoutes(*m_server, service);
  m_port = bind(*m_server, address, port);
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
