#include "http/request_parser.h"

#include <algorithm>
#include <boost/beast/core/string.hpp>
#include <boost/beast/http/error.hpp>

namespace cartonpick::orders {

namespace {

namespace beast = boost::beast;
namespace http = beast::http;

constexpr auto kMalformed = "the request is not HTTP as it should be, or cut short";
constexpr std::string_view kDigits = "0123456789";
/// The library expects as much of the last chunk; what follows a chunk is never shorter.
constexpr std::string_view kShortestFraming = "0\r\n\r\n";
constexpr std::string_view kForwardedPrefix = "X-Forwarded-";

Refusal malformed(std::string text = kMalformed) {
  return {400, "malformed", std::move(text)};
}

bool areEqualWords(std::string_view a, std::string_view b) {
  return beast::iequals({a.data(), a.size()}, {b.data(), b.size()});
}

std::string_view viewOf(beast::string_view text) {
  return {text.data(), text.size()};
}

/// Returns whether the text may be a host with its port, as far as its characters tell.
bool isHost(std::string_view text) {
  constexpr std::string_view kOthers = "-._~%!$&'()*+;=:[]";
  return std::all_of(text.begin(), text.end(), [&](unsigned char c) {
    return std::isalnum(c) != 0 || kOthers.find(static_cast<char>(c)) != std::string_view::npos;
  });
}

/// Where the authority of a target in absolute form begins; 0 in another form.
std::size_t authorityOf(std::string_view target) {
  for (const std::string_view scheme : {"http://", "https://"}) {
    if (areEqualWords(target.substr(0, scheme.size()), scheme)) {
      return scheme.size();
    }
  }
  return 0;
}

}  // namespace

RequestParser::RequestParser(const HttpLimits &limits) : m_limits(limits) {
  header_limit(static_cast<std::uint32_t>(limits.headBytes));
  body_limit(limits.bodyBytes);
}

std::size_t RequestParser::read(std::string_view bytes) {
  std::size_t used = 0;
  if (!m_refusal && !m_isHeadParsed) {
    used = readHead(bytes);
  }
  if (!m_refusal && m_isHeadParsed && !m_isWhole && used < bytes.size()) {
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
    const std::size_t first = m_head.empty() && used > 0 ? 1 : 0;
    const std::size_t size =
        m_scanner.scan(bytes.substr(used, m_limits.headBytes + 1 - m_head.size() - first));
    m_head += bytes.substr(used - first, first + size);
    used += size;
  }
  if (m_scanner.isWrong()) {
    refuse(malformed());
  } else if (m_head.size() > m_limits.headBytes) {
    const bool isTarget = m_head.find('\r') == std::string::npos;
    refuse(isTarget ? Refusal{414, "target_too_long", "the URL is too long"}
                    : Refusal{431, "head_too_large", "the request's head is larger than 64 KiB"});
  } else if (m_scanner.isWhole()) {
    parseHead();
  }
  return used;
}

void RequestParser::parseHead() {
  Error error;
  const std::size_t used = put(boost::asio::buffer(m_head), error);
  if (error) {
    refuse(error);
  } else if (!is_header_done() || used != m_head.size()) {
    refuse(malformed());
  } else {
    m_isHeadParsed = true;
    m_head = {};
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
  return !m_refusal;
}

void RequestParser::refuseLongFraming(std::string_view framing) {
  if (framing.size() == m_limits.framingBytes) {
    refuse({431, "head_too_large", "a chunk's header or the trailer is larger than 4 KiB"});
  }
}

std::size_t RequestParser::readBody(std::string_view bytes) {
  std::size_t used = 0;
  while (!m_refusal && !m_isWhole && used < bytes.size()) {
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

void RequestParser::refuse(Refusal refusal) {
  if (!m_refusal) {
    m_refusal = std::move(refusal);
  }
}

void RequestParser::refuse(const Error &error) {
  if (error == http::error::body_limit) {
    refuse({413, "body_too_large", "the body is larger than 16 MiB"});
  } else {
    refuse(malformed());
  }
}

void RequestParser::readTarget(std::string_view target) {
  const std::size_t authority = authorityOf(target);
  if (target.size() > m_limits.targetBytes) {
    refuse({414, "target_too_long", "the URL is too long"});
  } else if (target.find('#') != std::string_view::npos) {
    refuse(malformed());
  } else if (authority != 0) {
    readAbsoluteTarget(target, authority);
  } else if (target.starts_with('/') || (target == "*" && m_request.method == "OPTIONS")) {
    m_request.target = target;
  } else {
    refuse(malformed("the target is neither a path nor a URL"));
  }
}

void RequestParser::readAbsoluteTarget(std::string_view target, std::size_t authority) {
  const std::size_t path = std::min(target.find_first_of("/?", authority), target.size());
  m_request.host = target.substr(authority, path - authority);
  m_request.target = target.substr(path);
  if (!m_request.target.starts_with('/')) {
    m_request.target.insert(0, 1, '/');
  }
  m_hasAuthority = true;
  if (m_request.host.empty() || !isHost(m_request.host)) {
    refuse(malformed("the URL's host is not one"));
  }
}

void RequestParser::readField(Field field, std::string_view name, std::string_view value) {
  switch (field) {
    case Field::host:
      ++m_hosts;
      // The target in absolute form goes before the field.
      if (!m_hasAuthority) {
        m_request.host = value;
      }
      if (!isHost(value)) {
        refuse(malformed("the Host is not one"));
      }
      return;
    case Field::content_length:
      return readLength(value);
    case Field::transfer_encoding:
      return readTransferCoding(value);
    case Field::content_type:
      return readSingle(m_request.contentType, name, value);
    case Field::authorization:
      return readSingle(m_request.authorization, name, value);
    case Field::origin:
      return readSingle(m_request.origin, name, value);
    case Field::if_none_match:
      m_request.ifNoneMatch += m_request.ifNoneMatch.empty() ? "" : ", ";
      m_request.ifNoneMatch += value;
      return;
    case Field::expect:
      return readSingle(m_expectation, name, value);
    case Field::content_encoding:
      m_contentEncoding += m_contentEncoding.empty() ? "" : ", ";
      m_contentEncoding += value;
      return;
    case Field::cookie:
      m_request.cookie += m_request.cookie.empty() ? "" : "; ";
      m_request.cookie += value;
      return;
    case Field::via:
      m_forwarding.hasOther = true;
      return;
    default:
      return readForwarding(name, value);
  }
}

void RequestParser::readForwarding(std::string_view name, std::string_view value) {
  const auto append = [&](std::string &list) {
    list += list.empty() ? "" : ", ";
    list += value;
  };
  if (areEqualWords(name, "Forwarded")) {
    append(m_forwarding.forwarded);
  } else if (areEqualWords(name, "X-Forwarded-For")) {
    append(m_forwarding.forwardedFor);
  } else if (areEqualWords(name, "X-Request-Id")) {
    m_forwarding.requestId = value;
  } else if (areEqualWords(name, "X-Real-IP") ||
             areEqualWords(name.substr(0, kForwardedPrefix.size()), kForwardedPrefix)) {
    m_forwarding.hasOther = true;
  }
}

void RequestParser::readSingle(std::string &kept, std::string_view name, std::string_view value) {
  if (!kept.empty()) {
    refuse(malformed("there is more than one " + std::string(name)));
  }
  kept = value;
}

void RequestParser::readLength(std::string_view value) {
  ++m_lengths;
  if (m_lengths > 1 || value.find_first_not_of(kDigits) != std::string_view::npos) {
    refuse(malformed("the Content-Length is not one number"));
  }
}

void RequestParser::readTransferCoding(std::string_view value) {
  ++m_transferCodings;
  if (m_transferCodings > 1 || m_isHttp10) {
    refuse(malformed("the Transfer-Encoding is not \"chunked\" once"));
  } else if (!areEqualWords(value, "chunked")) {
    refuse({501, "transfer_coding", "no Transfer-Encoding but \"chunked\" is known"});
  }
}

void RequestParser::checkHead() {
  if (m_hosts != 1) {
    refuse(malformed("there is not one Host"));
  } else if (!m_contentEncoding.empty() && !areEqualWords(m_contentEncoding, "identity")) {
    refuse({415, "content_encoding", "a body with a Content-Encoding is not taken"});
  } else if (!m_expectation.empty()) {
    if (areEqualWords(m_expectation, "100-continue")) {
      m_expectsContinue = !m_isHttp10;
    } else {
      refuse({417, "expectation", "no expectation but \"100-continue\" is known"});
    }
  }
}

void RequestParser::on_request_impl(http::verb /*verb*/, Text method, Text target, int version,
                                    Error &error) {
  constexpr int kHttp10 = 10;
  m_request.method = viewOf(method);
  m_isHttp10 = version == kHttp10;
  readTarget(viewOf(target));
  if (m_refusal) {
    error = http::error::bad_target;
  }
}

void RequestParser::on_response_impl(int /*code*/, Text /*reason*/, int /*version*/,
                                     Error & /*error*/) {}

void RequestParser::on_field_impl(Field field, Text name, Text value, Error &error) {
  // The fields of a trailer change nothing.
  if (!m_isHeadParsed) {
    readField(field, viewOf(name), viewOf(value));
  }
  if (m_refusal) {
    error = http::error::bad_field;
  }
}

void RequestParser::on_header_impl(Error &error) {
  checkHead();
  if (m_refusal) {
    error = http::error::bad_field;
  }
}

void RequestParser::on_body_init_impl(const boost::optional<std::uint64_t> & /*length*/,
                                      Error & /*error*/) {}

std::size_t RequestParser::keepBody(Text bytes) {
  m_request.body.append(bytes.data(), bytes.size());
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
