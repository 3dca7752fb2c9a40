#pragma once

#include <cstdint>
#include <string>

namespace cartonpick::orders {

/// What was picked of one order line, as the tablet reported it. Two reports are the same fact when
/// all members are equal; the "sent" flag of a report is always 0 and therefore not kept.
struct PickReport {
  std::string delivery;
  std::string order;
  std::string box;
  std::string item;
  std::string barcode;
  std::int32_t quantity = 0;  ///< pieces
  std::string pickedAt;       ///< yyyy-MM-dd HH:mm:ss

  bool operator==(const PickReport &) const = default;
};

}  // namespace cartonpick::orders
