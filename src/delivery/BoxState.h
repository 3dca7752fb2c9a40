#pragma once

#include "delivery/PickRecords.h"

#include <QString>

#include <cstddef>
#include <cstdint>

/// How far a box has been picked.
enum class BoxState { Unopened, Completed, Incomplete };

/// Only equality completes: a box picked beyond its order is incomplete, one with nothing ordered
/// and nothing picked is completed.
BoxState boxStateOf(std::int32_t pickqty, std::int32_t orderqty);

/// "unopened", "completed" or "incomplete".
QString wordFor(BoxState state);

/// How many boxes of a working list there are, in all and in each state.
struct BoxCounters {
  std::size_t total = 0;
  std::size_t unopened = 0;
  std::size_t completed = 0;
  std::size_t incomplete = 0;
};

/// A loose pick counts as a completed box.
BoxCounters countersOf(const PickList &list);
