#pragma once

#include "summary/pickTableCell.h"

/// The cell of a box overview, with the layout of the pick table. No screen uses it.
struct boxOverviewTableViewCell : pickTableCell {
  Q_GADGET
};
