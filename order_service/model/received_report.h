#pragma once

#include "model/pick_report.h"

#include <optional>
#include <string>

namespace cartonpick::orders {

/// A pick report as it is in a store.
struct ReceivedReport {
  PickReport report;
  std::string receivedAt;  ///< UTC, yyyy-MM-dd HH:mm:ss.zzzzzz; empty for reports of old stores

  bool operator==(const ReceivedReport &) const = default;
};

/// Which received reports to select; a member without a value selects all.
struct ReportFilter {
  std::optional<std::string> delivery = std::nullopt;
  std::optional<std::string> day = std::nullopt;  ///< on which they were picked, yyyy-MM-dd
};

}  // namespace cartonpick::orders
