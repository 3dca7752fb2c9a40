#include "delivery/BoxState.h"

BoxState boxStateOf(std::int32_t pickqty, std::int32_t orderqty) {
  if (pickqty == orderqty) {
    return BoxState::Completed;
  }
  return pickqty == 0 ? BoxState::Unopened : BoxState::Incomplete;
}

QString wordFor(BoxState state) {
  switch (state) {
    case BoxState::Unopened:
      return QStringLiteral("unopened");
    case BoxState::Completed:
      return QStringLiteral("completed");
    case BoxState::Incomplete:
      break;
  }
  return QStringLiteral("incomplete");
}

BoxCounters countersOf(const PickList &list) {
  BoxCounters counters{.total = list.size()};
  for (const PickEntry &entry : list) {
    switch (boxStateOf(boxpickqtyOf(entry), boxorderqtyOf(entry))) {
      case BoxState::Unopened:
        ++counters.unopened;
        break;
      case BoxState::Completed:
        ++counters.completed;
        break;
      case BoxState::Incomplete:
        ++counters.incomplete;
        break;
    }
  }
  return counters;
}
