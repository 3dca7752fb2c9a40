#pragma once

#include "model/pick_report.h"

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

namespace cartonpick::orders {

/// A pick report as it is in a store.
struct ReceivedReport {
  PickReport report;
  std::string receivedAt;   ///< UTC, yyyy-MM-dd HH:mm:ss.zzzzzz; empty for reports of old stores
  std::int64_t number = 0;  ///< counts what happened to the delivery; 0 for reports of old stores
  bool isUndone = false;    ///< the delivery was reopened later

  bool operator==(const ReceivedReport &) const = default;
};

/// Returns true if `one` was received before `other`, which is of the same delivery. By the clock,
/// then by the order of commit; of lines of one report by the tablet's clock.
inline bool wasReceivedBefore(const ReceivedReport &one, const ReceivedReport &other) {
  return std::tie(one.receivedAt, one.number, one.report.pickedAt) <
         std::tie(other.receivedAt, other.number, other.report.pickedAt);
}

/// Which received reports to select; a member without a value selects all.
struct ReportFilter {
  std::optional<std::string> delivery = std::nullopt;
  std::optional<std::string> day = std::nullopt;  ///< on which they were picked, yyyy-MM-dd
};

}  // namespace cartonpick::orders
