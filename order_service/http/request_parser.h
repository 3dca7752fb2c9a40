#pragma once

#include "http/head_scanner.h"
#include "http/http_limits.h"
#include "http/http_message.h"
#include "http/refusal.h"
#include "http/request_head.h"

#include <boost/beast/http/basic_parser.hpp>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cartonpick::orders {

/// Reads one request from its bytes, however these are cut into pieces, and refuses everything that
/// two readers could understand differently. A header field that is not needed is dropped.
class RequestParser : private boost::beast::http::basic_parser<true> {
 public:
  explicit RequestParser(const HttpLimits &limits);

  /// Reads the bytes that follow the ones read so far. Returns the number of bytes used; the others
  /// are to be given again, with further bytes behind them, or belong to the next request.
  std::size_t read(std::string_view bytes);

  /// Returns true after the first byte that is not of an empty line.
  bool hasBegun() const { return m_scanner.hasBegun(); }
  /// Returns true once the request is complete; nothing is used after that, or after a refusal.
  bool isWhole() const { return m_isWhole; }
  const std::optional<Refusal> &refusal() const { return m_head.refusal(); }
  /// Refuses the request, unless it is refused already.
  void refuse(Refusal refusal) { m_head.refuse(std::move(refusal)); }

  /// Returns true if the client waits for "100 Continue" before it sends the body.
  bool expectsContinue() const { return m_head.expectsContinue() && !m_isWhole; }
  std::size_t heldBytes() const { return m_headBytes.size() + m_head.request().body.size(); }

  /// What was read so far; complete if isWhole().
  Request &request() { return m_head.request(); }
  const ForwardingFields &forwarding() const { return m_head.forwarding(); }
  /// Returns true if the connection may serve another request; false for an incomplete head.
  bool keepsAlive() const { return m_isHeadParsed && keep_alive(); }
  bool isHttp10() const { return m_head.isHttp10(); }

 private:
  using Error = boost::beast::error_code;
  using Text = boost::beast::string_view;
  using Field = RequestHead::Field;

  std::size_t readHead(std::string_view bytes);
  void parseHead();
  std::size_t readBody(std::string_view bytes);
  bool hasChunkLine(std::string_view framing);
  void refuseLongFraming(std::string_view framing);
  std::size_t keepBody(Text bytes);
  void refuse(const Error &error);

  void on_request_impl(boost::beast::http::verb verb, Text method, Text target, int version,
                       Error &error) override;
  void on_response_impl(int code, Text reason, int version, Error &error) override;
  void on_field_impl(Field field, Text name, Text value, Error &error) override;
  void on_header_impl(Error &error) override;
  void on_body_init_impl(const boost::optional<std::uint64_t> &length, Error &error) override;
  std::size_t on_body_impl(Text bytes, Error &error) override;
  void on_chunk_header_impl(std::uint64_t size, Text extensions, Error &error) override;
  std::size_t on_chunk_body_impl(std::uint64_t remaining, Text bytes, Error &error) override;
  void on_finish_impl(Error &error) override;

  const HttpLimits &m_limits;
  HeadScanner m_scanner;
  std::string m_headBytes;
  RequestHead m_head;
  std::uint64_t m_chunkBytes = 0;  ///< that are to come of the chunk
  bool m_isHeadParsed = false;
  bool m_isWhole = false;
};

}  // namespace cartonpick::orders
