#include "delivery/BoxState.h"

BoxState boxStateOf(std::int32_t pickqty, std::int32_t orderqty) {
  if (pickqty == orderqty) {
    return BoxState::Completed;
  }
  return pickqty == 0 ? BoxState::Unopened : BoxState::Incomplete;
}

Colour colourOf(BoxState state) {
  switch (state) {
    case BoxState::Unopened:
      return Colour::yellow;
    case BoxState::Completed:
      return Colour::green;
    case BoxState::Incomplete:
      break;
  }
  return Colour::red;
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
