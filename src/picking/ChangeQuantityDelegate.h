#pragma once

#include <cstdint>

/// Learns what was confirmed on the keypad.
class ChangeQuantityDelegate {
 public:
  virtual ~ChangeQuantityDelegate() = default;
  /// `row` is the row that the keypad was opened for, `currentQty` the picked quantity that it
  /// showed, `addQty` the quantity to add, which may be negative.
  virtual void CloseViewControllerWithGetQtyAtRow(std::int32_t row, std::int32_t currentQty,
                                                  std::int32_t addQty) = 0;
};
