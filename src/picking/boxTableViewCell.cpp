#include "picking/boxTableViewCell.h"

#include "delivery/BoxState.h"

namespace {

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

}  // namespace

boxTableViewCell boxTableViewCell::ofEntry(const PickEntry &entry, int row) {
  const std::int32_t pick = boxpickqtyOf(entry);
  const std::int32_t order = boxorderqtyOf(entry);
  const BoxState state = boxStateOf(pick, order);
  boxTableViewCell cell;
  cell.lblBox.text = boxOf(entry);
  cell.lblPickQty.text = QString::number(pick);
  cell.lblOrderQty.text = QString::number(order);
  // The state's colour replaces the alternating row colour of the other tables.
  cell.backgroundColor = row % 2 == 0 ? Colour::lightGrey : Colour::clear;
  cell.backgroundColor = colourOf(state);
  cell.state = wordFor(state);
  return cell;
}
