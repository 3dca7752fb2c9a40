#pragma once

#include "delivery/PickRecords.h"
#include "service/DeliveryAnswer.h"
#include "store/Picking.h"

#include <QString>

#include <vector>

/// The delivery's lines merged by item code, in the order in which the codes first occur: ordered
/// quantities are summed, everything else is that of the first line.
ItemLines itemLinesOf(const DeliveryAnswer &answer);

/// The delivery's boxes, in the order in which their cartons first occur, each with its lines as
/// they were delivered.
PickList boxesOf(const DeliveryAnswer &answer);

/// Brings earlier picks of the delivery into its boxes. A box total grows by every pick of the box;
/// of the box's lines only the first four are looked at for the item, and the first that matches
/// takes the picked quantity.
void restoreBoxes(const std::vector<Picking> &picks, PickList &boxes);

/// Brings earlier picks of the delivery into its item lines: each takes the picked quantity of the
/// last pick of its item, not the sum over its boxes.
void restoreItemLines(const std::vector<Picking> &picks, ItemLines &items);

/// A date of the service, "MM/dd/yyyy", as the header shows it, "dd/MM/yyyy". A text in another
/// form is shown as it was delivered.
QString headerDate(const QString &delivered);
