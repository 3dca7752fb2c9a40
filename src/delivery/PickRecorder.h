#pragma once

#include "base/Clock.h"
#include "delivery/PickRecords.h"
#include "delivery/PickingRules.h"

class ManagedObjectContext;

/// Writes one line of the box `box` to the store and saves: updates the picked quantity of the
/// line's first row, or inserts a row picked at the time of `clock`. A changed quantity is marked
/// as not sent, if `rules` resend corrections. Returns false and writes nothing if the store cannot
/// be read, or if `saveByRules` returns false.
bool recordPick(ManagedObjectContext &context, const Clock &clock, const QString &box,
                const BoxLine &line, const PickingRules &rules = {});

/// Writes `list` to the rows of the delivery `doc` and saves: a loose pick updates the quantity of
/// the first row with its item, and if the list has more entries than the delivery has rows, the
/// surplus entries at its end are inserted. Does nothing if the store cannot be read. A failed save
/// aborts the process.
void recordPickList(ManagedObjectContext &context, const QString &doc, const PickList &list);
