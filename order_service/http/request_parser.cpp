#include "http/request_parser.h"

#include <boost/asio/buffer.hpp>
#include <boost/beast/http/error.hpp>

namespace cartonpick::orders {

namespace {

namespace beast = boost::beast;
namespace http = beast::http;

/// The library expects as much of the last chunk; what follows a chunk is never shorter.
constexpr std::string_view kShortestFraming = "0\r\n\r\n";

std::string_view viewOf(beast::string_view text) {
  return {text.data(), text.size()};
}

}  // namespace

RequestParser::RequestParser(const HttpLimits &limits) : m_limits(limits), m_head(limits) {
  header_limit(static_cast<std::uint32_t>(limits.headBytes));
  body_limit(limits.bodyBytes);
}

std::size_t RequestParser::read(std::string_view bytes) {
  std::size_t used = 0;
  if (!refusal() && !m_isHeadParsed) {
    used = readHead(bytes);
  }
  if (!refusal() && m_isHeadParsed && !m_isWhole && used < bytes.size()) {
    used += readBody(bytes.substr(used));
  }
  return used;
}

std::size_t RequestParser::readHead(std::string_view bytes) {
  std::size_t used = 0;
  while (!hasBegun() && !m_scanner.isWrong() && used < bytes.size()) {
    used += m_scanner.scan(bytes.substr(used, 1));
  }
  if (hasBegun()) {
    // The first byte of the head is the last one that was scanned.
    const std::size_t first = m_headBytes.empty() && used > 0 ? 1 : 0;
    const std::size_t size =
        m_scanner.scan(bytes.substr(used, m_limits.headBytes + 1 - m_headBytes.size() - first));
    m_headBytes += bytes.substr(used - first, first + size);
    used += size;
  }
  if (m_scanner.isWrong()) {
    refuse(malformed());
  } else if (m_headBytes.size() > m_limits.headBytes) {
    const bool isTarget = m_headBytes.find('\r') == std::string::npos;
    refuse(isTarget ? Refusal{414, "target_too_long", "the URL is too long"}
                    : Refusal{431, "head_too_large", "the request's head is larger than 64 KiB"});
  } else if (m_scanner.isWhole()) {
    parseHead();
  }
  return used;
}

void RequestParser::parseHead() {
  Error error;
  const std::size_t used = put(boost::asio::buffer(m_headBytes), error);
  if (error) {
    refuse(error);
  } else if (!is_header_done() || used != m_headBytes.size()) {
    refuse(malformed());
  } else {
    m_isHeadParsed = true;
    m_headBytes = {};
  }
}

/// Returns true once the line with a chunk's size is complete. Refuses one that ends in a line feed
/// alone, and one with a quotation mark, behind which the library reads on over the line's end.
bool RequestParser::hasChunkLine(std::string_view framing) {
  constexpr std::string_view kLineEnd = "\r\n";
  const std::size_t begin = framing.starts_with(kLineEnd) ? kLineEnd.size() : 0;
  const std::size_t end = framing.find('\n', begin);
  if (end == std::string_view::npos || framing.size() < kShortestFraming.size()) {
    return false;
  }
  const std::string_view line = framing.substr(begin, end - begin);
  if (!line.ends_with('\r') || line.find('"') != std::string_view::npos) {
    refuse(malformed("a chunk's size is not followed by a plain extension, or its line's end"));
  }
  return !refusal();
}

void RequestParser::refuseLongFraming(std::string_view framing) {
  if (framing.size() == m_limits.framingBytes) {
    refuse({431, "head_too_large", "a chunk's header or the trailer is larger than 4 KiB"});
  }
}

std::size_t RequestParser::readBody(std::string_view bytes) {
  std::size_t used = 0;
  while (!refusal() && !m_isWhole && used < bytes.size()) {
    // The library reads the last chunk's line again for each piece of the trailer.
    const bool isFraming = chunked() && m_chunkBytes == 0;
    const std::string_view next =
        bytes.substr(used, isFraming ? m_limits.framingBytes : std::string_view::npos);
    if (isFraming && !hasChunkLine(next)) {
      refuseLongFraming(next);
      return used;
    }
    Error error;
    used += put(boost::asio::buffer(next.data(), next.size()), error);
    if (error == http::error::need_more) {
      refuseLongFraming(next);
      return used;
    }
    if (error) {
      refuse(error);
    }
  }
  return used;
}

void RequestParser::refuse(const Error &error) {
  if (error == http::error::body_limit) {
    refuse({413, "body_too_large", "the body is larger than 16 MiB"});
  } else {
    refuse(malformed());
  }
}

void RequestParser::on_request_impl(http::verb /*verb*/, Text method, Text target, int version,
                                    Error &error) {
  constexpr int kHttp10 = 10;
  m_head.readLine(viewOf(method), viewOf(target), version == kHttp10);
  if (refusal()) {
    error = http::error::bad_target;
  }
}

void RequestParser::on_response_impl(int /*code*/, Text /*reason*/, int /*version*/,
                                     Error & /*error*/) {}

void RequestParser::on_field_impl(Field field, Text name, Text value, Error &error) {
  // The fields of a trailer change nothing.
  if (!m_isHeadParsed) {
    m_head.readField(field, viewOf(name), viewOf(value));
  }
  if (refusal()) {
    error = http::error::bad_field;
  }
}

void RequestParser::on_header_impl(Error &error) {
  m_head.check();
  if (refusal()) {
    error = http::error::bad_field;
  }
}

void RequestParser::on_body_init_impl(const boost::optional<std::uint64_t> & /*length*/,
                                      Error & /*error*/) {}

std::size_t RequestParser::keepBody(Text bytes) {
  request().body.append(bytes.data(), bytes.size());
  return bytes.size();
}

std::size_t RequestParser::on_body_impl(Text bytes, Error & /*error*/) {
  return keepBody(bytes);
}

void RequestParser::on_chunk_header_impl(std::uint64_t size, Text /*extensions*/,
                                         Error & /*error*/) {
  m_chunkBytes = size;
}

std::size_t RequestParser::on_chunk_body_impl(std::uint64_t remaining, Text bytes,
                                              Error & /*error*/) {
  m_chunkBytes = remaining - bytes.size();
  return keepBody(bytes);
}

void RequestParser::on_finish_impl(Error & /*error*/) {
  m_isWhole = true;
}

}  // namespace cartonpick::orders
