#pragma once

#include "picked_line.h"

#include <string_view>
#include <vector>

namespace cartonpick::orders {

/// The pickings that were accepted. Implementations may be called from several threads at once.
class SentPickings {
 public:
  SentPickings() = default;
  SentPickings(const SentPickings &) = delete;
  SentPickings &operator=(const SentPickings &) = delete;
  virtual ~SentPickings() = default;

  /// Whether anything was stored for the delivery. Throws std::exception when that can't be told.
  virtual bool isSent(std::string_view delivery) const = 0;

  /// Stores all of the lines or none; lines that are stored already change nothing. Returns only
  /// once they would survive a power cut, as far as the implementation can. Throws std::exception.
  virtual void store(const std::vector<PickedLine> &lines) = 0;
};

}  // namespace cartonpick::orders
