// Parses arbitrary bytes as a request to the order service. The outcome must not depend on whether
// they arrive at once, in two pieces or one by one, and the parser must not keep more of them than
// its limits allow.

#include "Property.h"
#include "http/request_parser.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace {

using namespace cartonpick::orders;

constexpr HttpLimits kLimits = {
    .targetBytes = 40, .headBytes = 300, .framingBytes = 30, .bodyBytes = 100};

/// The outcome of parsing one request.
struct Outcome {
  int status = 0;  ///< of the refusal; 0 if there is none
  bool isWhole = false;
  bool keepsAlive = false;
  std::string method = {};
  std::string target = {};
  std::string host = {};
  std::string body = {};
  std::string rest = {};

  bool operator==(const Outcome &) const = default;
};

/// Parses a request in pieces, like a connection.
class Reading {
 public:
  void add(std::string_view piece) {
    m_received += piece;
    m_received.erase(0, m_parser.read(m_received));
    // The parser is allowed to hold the last piece beyond its limits.
    require(m_parser.heldBytes() <= 2 * kLimits.headBytes + kLimits.bodyBytes + piece.size(),
            "no more is kept than the limits allow");
  }

  Outcome outcome() {
    if (m_parser.refusal()) {
      return {.status = m_parser.refusal()->status};
    }
    if (!m_parser.isWhole()) {
      return {};
    }
    const Request &request = m_parser.request();
    require(request.target.starts_with('/') || request.target == "*", "a target is a path");
    require(request.body.size() <= kLimits.bodyBytes, "a body is no larger than it may be");
    return {.isWhole = true,
            .keepsAlive = m_parser.keepsAlive(),
            .method = request.method,
            .target = request.target,
            .host = request.host,
            .body = request.body,
            .rest = m_received};
  }

 private:
  RequestParser m_parser{kLimits};
  std::string m_received;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char *>(data), size);
  Reading whole;
  whole.add(bytes);
  const Outcome outcome = whole.outcome();
  Reading byByte;
  Reading inTwo;
  const std::size_t cut = size == 0 ? 0 : data[0] % size;
  inTwo.add(bytes.substr(0, cut));
  inTwo.add(bytes.substr(cut));
  for (const char &byte : bytes) {
    byByte.add({&byte, 1});
  }
  require(inTwo.outcome() == outcome, "a request in two pieces is read like the whole");
  require(byByte.outcome() == outcome, "a request byte by byte is read like the whole");
  return 0;
}
