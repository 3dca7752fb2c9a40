#pragma once

#include "delivery/CodePositions.h"
#include "delivery/PickRecords.h"

#include <QByteArray>
#include <QString>

#include <optional>

class ManagedObjectContext;
struct Items;

/// The measured operations, implemented as in the program.
namespace program {

/// Replaces the catalogue in the store at `path` with the one in `body`. Throws std::runtime_error
/// if it cannot be stored.
void storeCatalogue(const QByteArray &body, const QString &path);

struct Delivery {
  ItemLines items;
  PickList boxes;
};
/// Parses the delivery "4711", order "A1", and restores its earlier picks.
Delivery importDelivery(const QByteArray &body, ManagedObjectContext &context);

/// Returns the article with `code`; std::nullopt if `code` is in `lines` or not in the catalogue.
std::optional<Items> scan(const CodePositions &lines, ManagedObjectContext &context,
                          const QString &code);

}  // namespace program
