#include "store/DeliveryPickTimes.h"

#include <algorithm>

namespace {

/// Returns the span from the earlier start to the later end; a span without times is ignored.
PickTimes united(const PickTimes &a, const PickTimes &b) {
  if (!a.mindatepicked.isValid() || !b.mindatepicked.isValid()) {
    return a.mindatepicked.isValid() ? a : b;
  }
  return {std::min(a.mindatepicked, b.mindatepicked), std::max(a.maxdatepicked, b.maxdatepicked)};
}

}  // namespace

void widenToDeliveries(std::vector<DeliveryPickTimes> &groups) {
  for (auto first = groups.begin(); first != groups.end();) {
    const auto last = std::find_if(first, groups.end(), [&](const DeliveryPickTimes &entry) {
      // A null and an empty number are two deliveries, though QString compares them equal.
      return entry.doc != first->doc || entry.doc.isNull() != first->doc.isNull();
    });
    PickTimes times = first->times;
    for (auto entry = first; entry != last; ++entry) {
      times = united(times, entry->times);
    }
    for (; first != last; ++first) {
      first->times = times;
    }
  }
}
