#include "http/request_head.h"

#include <algorithm>
#include <boost/beast/core/string.hpp>
#include <cctype>

namespace cartonpick::orders {

namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kForwardedPrefix = "X-Forwarded-";

bool areEqualWords(std::string_view a, std::string_view b) {
  return boost::beast::iequals({a.data(), a.size()}, {b.data(), b.size()});
}

/// Returns true if the text may be a host with its port, as far as its characters tell.
bool isHost(std::string_view text) {
  constexpr std::string_view kOthers = "-._~%!$&'()*+;=:[]";
  return std::all_of(text.begin(), text.end(), [&](unsigned char c) {
    return std::isalnum(c) != 0 || kOthers.find(static_cast<char>(c)) != std::string_view::npos;
  });
}

/// Returns where the authority of a target in absolute form begins, 0 for another form.
std::size_t authorityOf(std::string_view target) {
  for (const std::string_view scheme : {"http://", "https://"}) {
    if (areEqualWords(target.substr(0, scheme.size()), scheme)) {
      return scheme.size();
    }
  }
  return 0;
}

/// A field that occurs several times is a list.
void append(std::string &list, std::string_view separator, std::string_view value) {
  if (!list.empty()) {
    list += separator;
  }
  list += value;
}

}  // namespace

void RequestHead::refuse(Refusal refusal) {
  if (!m_refusal) {
    m_refusal = std::move(refusal);
  }
}

void RequestHead::readLine(std::string_view method, std::string_view target, bool isHttp10) {
  m_request.method = method;
  m_isHttp10 = isHttp10;
  readTarget(target);
}

void RequestHead::readTarget(std::string_view target) {
  const std::size_t authority = authorityOf(target);
  if (target.size() > m_limits.targetBytes) {
    refuse({414, "target_too_long", "the URL is too long"});
  } else if (m_request.method == "CONNECT" || target.find('#') != std::string_view::npos) {
    refuse(malformed());
  } else if (authority != 0) {
    readAbsoluteTarget(target, authority);
  } else if (target.starts_with('/') || (target == "*" && m_request.method == "OPTIONS")) {
    m_request.target = target;
  } else {
    refuse(malformed("the target is neither a path nor a URL"));
  }
}

void RequestHead::readAbsoluteTarget(std::string_view target, std::size_t authority) {
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

void RequestHead::readField(Field field, std::string_view name, std::string_view value) {
  switch (field) {
    case Field::host:
      return readHost(value);
    case Field::content_length:
      return readLength(value);
    case Field::transfer_encoding:
      return readTransferCoding(value);
    case Field::content_type:
      return readSingle(field, m_request.contentType, value);
    case Field::authorization:
      return readSingle(field, m_request.authorization, value);
    case Field::origin:
      return readSingle(field, m_request.origin, value);
    case Field::if_none_match:
      return append(m_request.ifNoneMatch, ", ", value);
    case Field::expect:
      return readSingle(field, m_expectation, value);
    case Field::content_encoding:
      return append(m_contentEncoding, ", ", value);
    case Field::cookie:
      return append(m_request.cookie, "; ", value);
    case Field::via:
      m_forwarding.hasOther = true;
      return;
    default:
      return readForwarding(name, value);
  }
}

void RequestHead::readHost(std::string_view value) {
  ++m_hosts;
  // The host of a target in absolute form wins.
  if (!m_hasAuthority) {
    m_request.host = value;
  }
  if (!isHost(value)) {
    refuse(malformed("the Host is not one"));
  }
}

void RequestHead::readForwarding(std::string_view name, std::string_view value) {
  if (areEqualWords(name, "Forwarded")) {
    append(m_forwarding.forwarded, ", ", value);
  } else if (areEqualWords(name, "X-Forwarded-For")) {
    append(m_forwarding.forwardedFor, ", ", value);
  } else if (areEqualWords(name, "X-Request-Id")) {
    m_forwarding.requestId = value;
  } else if (areEqualWords(name, "X-Real-IP") ||
             areEqualWords(name.substr(0, kForwardedPrefix.size()), kForwardedPrefix)) {
    m_forwarding.hasOther = true;
  }
}

void RequestHead::readSingle(Field field, std::string &kept, std::string_view value) {
  // An empty one counts, too.
  if (!m_singles.insert(field).second) {
    const auto name = boost::beast::http::to_string(field);
    refuse(malformed("there is more than one " + std::string(name.data(), name.size())));
  }
  kept = value;
}

void RequestHead::readLength(std::string_view value) {
  ++m_lengths;
  if (m_lengths > 1 || value.find_first_not_of(kDigits) != std::string_view::npos) {
    refuse(malformed("the Content-Length is not one number"));
  }
}

void RequestHead::readTransferCoding(std::string_view value) {
  ++m_transferCodings;
  if (m_transferCodings > 1 || m_isHttp10) {
    refuse(malformed("the Transfer-Encoding is not \"chunked\" once"));
  } else if (!areEqualWords(value, "chunked")) {
    refuse({501, "transfer_coding", "no Transfer-Encoding but \"chunked\" is known"});
  }
}

void RequestHead::check() {
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

}  // namespace cartonpick::orders
