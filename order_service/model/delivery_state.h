#pragma once

namespace cartonpick::orders {

/// How far a delivery is, line by line: what is missing in one is not made up for by another.
enum class DeliveryState {
  Open,          ///< nothing was sent
  Complete,      ///< every line was picked as it was ordered
  Short,         ///< of some lines less was picked
  Over,          ///< of some lines more was picked
  ShortAndOver,  ///< both
  Withdrawn,     ///< something was sent, and it is ordered no longer
};

/// What is known of a delivery's lines.
struct DeliveryTraits {
  bool isOrdered = false;
  bool isSent = false;
  bool isShort = false;
  bool isOver = false;
};

inline DeliveryState stateOf(const DeliveryTraits &traits) {
  if (!traits.isOrdered) {
    return DeliveryState::Withdrawn;
  }
  if (!traits.isSent) {
    return DeliveryState::Open;
  }
  if (traits.isShort) {
    return traits.isOver ? DeliveryState::ShortAndOver : DeliveryState::Short;
  }
  return traits.isOver ? DeliveryState::Over : DeliveryState::Complete;
}

}  // namespace cartonpick::orders
