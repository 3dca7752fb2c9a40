#pragma once

#include "summary/pickTableCell.h"

/// A row of a box overview, laid out like a row of the pick table. No screen shows one.
struct boxOverviewTableViewCell : pickTableCell {
  Q_GADGET
};
