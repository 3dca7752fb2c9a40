#pragma once

#include "delivery/Delivery.h"
#include "delivery/PickRecords.h"
#include "store/Picking.h"

#include <QString>

#include <vector>

/// The delivery's lines merged by item code, in the order in which the codes first occur: ordered
/// quantities are summed, everything else is that of the first line.
ItemLines itemLinesOf(const Delivery &delivery);

/// The delivery's boxes, in the order in which their cartons first occur, each with its lines as
/// they were delivered.
PickList boxesOf(const Delivery &delivery);

/// Brings earlier picks of the delivery into its boxes. A box total grows by every pick of the box;
/// of the first lines of the box, the first with the item takes the picked quantity.
void restoreBoxes(const std::vector<Picking> &picks, PickList &boxes);

/// Brings earlier picks of the delivery into its item lines.
void restoreItemLines(const std::vector<Picking> &picks, ItemLines &items);

/// A date of the service, "MM/dd/yyyy", as the header shows it, "dd/MM/yyyy". A text in another
/// form is shown as it was delivered.
QString headerDate(const QString &delivered);
