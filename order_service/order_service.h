#pragma once

#include "deliveries.h"
#include "sent_pickings.h"

#include <optional>
#include <string>
#include <string_view>

namespace cartonpick::orders {

/// A request as it came over the wire.
struct Request {
  std::string method;
  std::string target;  ///< path and query, still percent-encoded
  std::string contentType;
  std::string body;
};

struct Answer {
  int status = 200;
  std::string contentType;
  std::string body;
  /// The methods that would have been right, with status 405 only.
  std::optional<std::string> allow = std::nullopt;
};

/// A plain text answer.
Answer textAnswer(int status, std::string text);

/// The picking web service, apart from its transport. May be called from several threads at once.
class OrderService {
 public:
  /// Both arguments must outlive the service.
  OrderService(const Deliveries &deliveries, SentPickings &sent)
      : m_deliveries(deliveries), m_sent(sent) {}

  /// Throws what the store of sent pickings throws.
  Answer answer(const Request &request) const;

 private:
  Answer orderPerCarton(std::string_view encodedNumber) const;
  Answer items() const;
  Answer sendPick(const Request &request) const;

  const Deliveries &m_deliveries;
  SentPickings &m_sent;
};

}  // namespace cartonpick::orders
