#pragma once

#include "base/Clock.h"
#include "delivery/PickRecords.h"

class ManagedObjectContext;

/// Writes one line of the box `box` to the store and saves: updates the picked quantity of the
/// line's first row or, if it has none, inserts a row with the time of `clock` as its pick time.
/// Returns false and writes nothing if the store cannot be read. A failed save aborts the process.
bool recordPick(ManagedObjectContext &context, const Clock &clock, const QString &box,
                const BoxLine &line);

/// Writes `list` to the rows of the delivery `doc` and saves: a loose pick updates the quantity of
/// the first row with its item, and if the list has more entries than the delivery has rows, the
/// surplus entries at its end are inserted. Does nothing if the store cannot be read. A failed save
/// aborts the process.
void recordPickList(ManagedObjectContext &context, const QString &doc, const PickList &list);
