#pragma once

// clang-format off: Boost 1.74's awaitable.hpp needs the header before it.
#include <boost/asio/awaitable.hpp>
#include <utility>
// clang-format on
#include <boost/asio/basic_socket_acceptor.hpp>
#include <boost/asio/basic_stream_socket.hpp>
#include <boost/asio/basic_waitable_timer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <chrono>

/// Asio's types for the one executor that the server has: the general ones would erase its type at
/// every step.
namespace cartonpick::orders::io {

using Clock = std::chrono::steady_clock;
using Error = boost::system::error_code;
using Executor = boost::asio::io_context::executor_type;
using Tcp = boost::asio::ip::tcp;
using Socket = boost::asio::basic_stream_socket<Tcp, Executor>;
using Acceptor = boost::asio::basic_socket_acceptor<Tcp, Executor>;
using Timer = boost::asio::basic_waitable_timer<Clock, boost::asio::wait_traits<Clock>, Executor>;

template <class Result>
using Awaitable = boost::asio::awaitable<Result, Executor>;

/// Has an operation awaited, and its error put into `error` instead of thrown.
inline auto into(Error &error) {
  return boost::asio::redirect_error(boost::asio::use_awaitable_t<Executor>(), error);
}

}  // namespace cartonpick::orders::io
