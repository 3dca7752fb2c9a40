#pragma once

#include "delivery/PickRecords.h"
#include "store/Items.h"

#include <QDateTime>
#include <QString>

#include <cstddef>
#include <optional>
#include <variant>

class ManagedObjectContext;

/// The meaning of a scanned code: the position of a line in the open box, a loose pick that is not
/// in the working list yet, or a foreign line, of an article that is not ordered in the open box,
/// which is not in the box yet.
using ScanMatch = std::variant<std::size_t, LoosePick, BoxLine>;

/// Returns true if `text`, a barcode or an item code, is `code`. A null text is no code, not even
/// an empty one.
bool isCode(const QString &text, const QString &code);

/// Returns the first loose pick of `list` whose barcode or item code is `code`; nullptr if there is
/// none.
const LoosePick *loosePickWithCode(const PickList &list, const QString &code);

/// Returns the first article of the catalogue whose item code or barcode is `code`; std::nullopt if
/// there is none or the catalogue cannot be read.
std::optional<Items> articleWithCode(ManagedObjectContext &context, const QString &code);

/// Returns a foreign line for a catalogue article, with quantities 0. Its delivery and order are
/// those of `neighbour`, a line of the same box.
BoxLine foreignLineOf(const Items &article, const BoxLine &neighbour);

/// Returns a copy of `earlier` picked at `now`, with quantity 0 and not sent.
LoosePick loosePickAgain(const LoosePick &earlier, const QDateTime &now);

/// Returns a loose pick of a catalogue article, with quantity 0. Its order number is that of the
/// first entry of `list`, or null if that entry is a box, which has none.
LoosePick loosePickOf(const Items &article, const QString &doc, const PickList &list,
                      const QDateTime &now);
