#include "http_client.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/string.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>

namespace cartonpick::orders {

namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;

Reply replyOf(const http::response<http::string_body> &response) {
  Reply reply = {
      .status = static_cast<int>(response.result_int()), .headers = {}, .body = response.body()};
  for (const auto &field : response) {
    reply.headers.emplace_back(field.name_string(), field.value());
  }
  return reply;
}

http::request<http::string_body> requestOf(const std::string &method, const std::string &target,
                                           const std::string &body, const Headers &headers) {
  constexpr unsigned kHttp11 = 11;
  http::request<http::string_body> request;
  request.method_string(method);
  request.target(target);
  request.version(kHttp11);
  request.set(http::field::host, "127.0.0.1");
  request.keep_alive(false);
  for (const auto &[name, value] : headers) {
    request.set(name, value);
  }
  request.body() = body;
  request.content_length(body.size());
  return request;
}

}  // namespace

std::string Reply::header(const std::string &name) const {
  for (const auto &[known, value] : headers) {
    if (boost::beast::iequals(known, name)) {
      return value;
    }
  }
  return {};
}

Reply HttpClient::request(const std::string &method, const std::string &target,
                          const std::string &body, const Headers &headers) const {
  asio::io_context context;
  asio::ip::tcp::socket socket(context);
  boost::system::error_code error;
  socket.connect({asio::ip::address_v4::loopback(), m_port}, error);
  // A server that refuses a request answers before it has received all of it.
  http::write(socket, requestOf(method, target, body, headers), error);
  boost::beast::flat_buffer buffer;
  http::response_parser<http::string_body> parser;
  parser.body_limit(boost::none);
  parser.skip(method == "HEAD");
  http::read(socket, buffer, parser, error);
  return parser.is_done() ? replyOf(parser.get()) : Reply{};
}

Reply HttpClient::get(const std::string &target, const Headers &headers) const {
  return request("GET", target, {}, headers);
}

Reply HttpClient::post(const std::string &target, const std::string &body,
                       const std::string &contentType) const {
  return request("POST", target, body, {{"Content-Type", contentType}});
}

std::vector<Reply> repliesIn(const std::string &bytes) {
  std::vector<Reply> replies;
  std::size_t position = 0;
  while (position < bytes.size()) {
    http::response_parser<http::string_body> parser;
    parser.eager(true);
    boost::system::error_code error;
    position += parser.put(asio::buffer(bytes) + position, error);
    if (error || !parser.is_done()) {
      return replies;
    }
    replies.push_back(replyOf(parser.get()));
  }
  return replies;
}

}  // namespace cartonpick::orders
