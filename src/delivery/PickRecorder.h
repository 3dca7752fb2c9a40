#pragma once

#include "base/Clock.h"
#include "delivery/PickRecords.h"

class ManagedObjectContext;

/// Writes one line of the box `box` to the store and saves: updates the picked quantity of the row
/// that the line has already, or inserts one. False if the store could not be read; then nothing is
/// written. A failed save ends the process.
bool recordPick(ManagedObjectContext &context, const Clock &clock, const QString &box,
                const BoxLine &line);

/// Writes the loose picks of `list` to the rows of the delivery `doc` that have their items,
/// inserts the entries beyond the number of those rows, and saves.
void recordPickList(ManagedObjectContext &context, const QString &doc, const PickList &list);
