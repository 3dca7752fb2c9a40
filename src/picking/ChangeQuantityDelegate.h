#pragma once

#include <cstdint>

/// Receives the quantity that the user confirms on the keypad.
class ChangeQuantityDelegate {
 public:
  virtual ~ChangeQuantityDelegate() = default;
  /// @param row         the row of the pick table that the keypad was opened for
  /// @param currentQty  the picked quantity shown on the keypad
  /// @param addQty      the quantity to add; can be negative
  virtual void CloseViewControllerWithGetQtyAtRow(std::int32_t row, std::int32_t currentQty,
                                                  std::int32_t addQty) = 0;
};
