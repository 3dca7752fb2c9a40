#pragma once

#include "model/delivery_state.h"
#include "model/order_line.h"
#include "model/received_report.h"

#include <cstdint>
#include <string>
#include <vector>

namespace cartonpick::orders {

/// What was ordered and picked of one article for one order in one box.
struct LineFulfilment {
  std::string order;
  std::string box;
  Article article;
  bool isOrdered = false;
  std::int64_t ordered = 0;  ///< pieces
  /// The quantities that were reported; the last one holds.
  std::vector<std::int32_t> reports = {};
  std::vector<std::int32_t> undone = {};  ///< those that a reopening undid

  std::int64_t picked() const { return reports.empty() ? 0 : reports.back(); }
  std::int64_t difference() const { return picked() - ordered; }
};

/// A box with its lines: those that are ordered in their given order, then the others.
struct PickedBox {
  std::string name;
  std::vector<LineFulfilment> lines;
};

/// A delivery box by box: those that are ordered in their given order, then the others.
struct PickedDelivery {
  std::vector<PickedBox> boxes;
  std::string sentAt;  ///< when the latest line that counts was received; may be empty
  DeliveryState state = DeliveryState::Open;
};

/// Brings together a delivery's lines and the reports about them. Lines that the tablet can't tell
/// apart become one.
PickedDelivery pickedDelivery(const std::vector<OrderLine> &lines,
                              std::vector<ReceivedReport> reports);

}  // namespace cartonpick::orders
