#pragma once

#include "model/delivery_state.h"

#include <cstdint>
#include <string>
#include <vector>

namespace soci {
class session;
}

namespace cartonpick::orders {

/// A delivery, in figures.
struct DeliverySummary {
  std::string number;
  std::string customer;
  int boxes = 0;             ///< that are ordered
  std::int64_t ordered = 0;  ///< pieces
  std::int64_t picked = 0;   ///< pieces, after all corrections
  std::string sentAt;        ///< when the latest of its lines was received; may be empty
  DeliveryState state = DeliveryState::Open;
};

/// The most deliveries that selectSummaries() returns.
inline constexpr int kMaxSummaries = 100;

/// Returns the deliveries that are ordered or were sent, the latest change first. With a `search`,
/// only those whose number starts with it or whose customer has it anywhere in the name, in upper
/// or lower case. It is UTF-8 without the character U+0000. Search texts must be up to date, see
/// hasOutdatedSearchTexts(). Throws soci::soci_error.
std::vector<DeliverySummary> selectSummaries(soci::session &session, const std::string &search);

}  // namespace cartonpick::orders
