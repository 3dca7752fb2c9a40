#pragma once

#include "delivery/PickRecords.h"

#include <QString>

#include <cstddef>
#include <cstdint>

/// The progress of a box.
enum class BoxState { Unopened, Completed, Incomplete };

/// Returns the state of a box with these total quantities. A box is completed only if they are
/// equal: a box with more picked than ordered is incomplete, one with both 0 is completed.
BoxState boxStateOf(std::int32_t pickqty, std::int32_t orderqty);

/// "unopened", "completed" or "incomplete".
QString wordFor(BoxState state);

/// The number of boxes of a working list, in total and in each state.
struct BoxCounters {
  std::size_t total = 0;
  std::size_t unopened = 0;
  std::size_t completed = 0;
  std::size_t incomplete = 0;
};

/// Counts the boxes of `list`. A loose pick counts as a completed box.
BoxCounters countersOf(const PickList &list);
