#pragma once

#include "delivery/PickRecords.h"
#include "store/Items.h"

#include <QDateTime>
#include <QString>

#include <cstddef>
#include <optional>
#include <variant>

class ManagedObjectContext;

/// What a scanned code stands for: a line of the open box, as its position, or a loose pick that is
/// not in the working list yet.
using ScanMatch = std::variant<std::size_t, LoosePick>;

/// The first loose pick of `list` whose barcode or item code is `code`; nothing if there is none.
const LoosePick *loosePickWithCode(const PickList &list, const QString &code);

/// The first article of the catalogue whose item code or barcode is `code`. Nothing if there is
/// none, or if the catalogue cannot be read.
std::optional<Items> articleWithCode(ManagedObjectContext &context, const QString &code);

/// A new loose pick of the code that `earlier` has.
LoosePick loosePickAgain(const LoosePick &earlier, const QDateTime &now);

/// A loose pick of an article of the catalogue. It has the order number of the first entry of
/// `list`, which a box does not have.
LoosePick loosePickOf(const Items &article, const QString &doc, const PickList &list,
                      const QDateTime &now);
