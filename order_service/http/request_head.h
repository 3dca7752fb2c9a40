#pragma once

#include "http/http_limits.h"
#include "http/http_message.h"
#include "http/refusal.h"

#include <boost/beast/http/field.hpp>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace cartonpick::orders {

/// The header fields about proxies.
struct ForwardingFields {
  std::string forwarded;
  std::string forwardedFor;  ///< X-Forwarded-For
  std::string requestId;     ///< X-Request-Id
  bool hasOther = false;     ///< Via, X-Real-IP, or another X-Forwarded- field
};

/// What the lines of a request's head mean. Refuses everything that two readers could understand
/// differently, and what the service does not support.
class RequestHead {
 public:
  using Field = boost::beast::http::field;

  explicit RequestHead(const HttpLimits &limits) : m_limits(limits) {}

  void readLine(std::string_view method, std::string_view target, bool isHttp10);
  void readField(Field field, std::string_view name, std::string_view value);
  /// To be called after the last field.
  void check();

  const std::optional<Refusal> &refusal() const { return m_refusal; }
  /// Refuses the request, unless it is refused already.
  void refuse(Refusal refusal);

  /// The method, the target and the fields read so far.
  Request &request() { return m_request; }
  const Request &request() const { return m_request; }
  const ForwardingFields &forwarding() const { return m_forwarding; }
  bool isHttp10() const { return m_isHttp10; }
  /// Returns true if the client waits for "100 Continue" before it sends the body.
  bool expectsContinue() const { return m_expectsContinue; }

 private:
  void readTarget(std::string_view target);
  void readAbsoluteTarget(std::string_view target, std::size_t authority);
  void readHost(std::string_view value);
  void readForwarding(std::string_view name, std::string_view value);
  void readSingle(Field field, std::string &kept, std::string_view value);
  void readLength(std::string_view value);
  void readTransferCoding(std::string_view value);

  const HttpLimits &m_limits;
  std::optional<Refusal> m_refusal;
  Request m_request;
  ForwardingFields m_forwarding;
  std::set<Field> m_singles;  ///< that must not come again
  std::string m_contentEncoding;
  std::string m_expectation;
  std::size_t m_hosts = 0;
  std::size_t m_lengths = 0;
  std::size_t m_transferCodings = 0;
  bool m_isHttp10 = false;
  bool m_hasAuthority = false;
  bool m_expectsContinue = false;
};

}  // namespace cartonpick::orders
