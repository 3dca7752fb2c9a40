#pragma once

#include "delivery/Delivery.h"
#include "delivery/PickRecords.h"
#include "delivery/PickingRules.h"
#include "store/Picking.h"

#include <QString>

#include <vector>

/// Returns the delivery's lines merged by item code, in the order of each code's first line.
/// Ordered quantities are summed; the other fields are those of the first line.
ItemLines itemLinesOf(const Delivery &delivery);

/// Returns the delivery's boxes, in the order of each carton's first line. The lines of a box keep
/// their order.
PickList boxesOf(const Delivery &delivery);

/// Restores earlier picks in the boxes of their delivery. Each pick is added to the total of its
/// box and becomes the picked quantity of the first line with its item among the first four lines
/// of the box. If `rules` restore all lines, it goes to the lines with its item, from the first on;
/// the last one takes what exceeds the ordered quantities. Without such a line it becomes a foreign
/// line.
void restoreBoxes(const std::vector<Picking> &picks, PickList &boxes,
                  const PickingRules &rules = {});

/// Restores earlier picks in the item lines of their delivery. The picked quantity of a line
/// becomes that of the last pick of its item, in any box; or the sum of its picks, if `rules` sum
/// items over boxes. If `rules` restore all lines, an item without a line gets one.
void restoreItemLines(const std::vector<Picking> &picks, ItemLines &items,
                      const PickingRules &rules = {});

/// Converts a date from the service, "MM/dd/yyyy", to the header's format, "dd/MM/yyyy". Returns
/// any other string unchanged.
QString headerDate(const QString &delivered);
