#pragma once

#include "delivery/CodePositions.h"
#include "delivery/PickRecords.h"

#include <QByteArray>
#include <QString>

#include <optional>

class ManagedObjectContext;
struct Items;

/// The pieces of work of the program that are measured, each as the program does it.
namespace program {

/// Puts the catalogue in `body` into the store at `path`. Throws std::runtime_error.
void storeCatalogue(const QByteArray &body, const QString &path);

struct Delivery {
  ItemLines items;
  PickList boxes;
};
/// Reads the delivery "4711", order "A1", with its earlier picks.
Delivery importDelivery(const QByteArray &body, ManagedObjectContext &context);

/// The article of `code`, which is none of `lines`; nothing otherwise.
std::optional<Items> scan(const CodePositions &lines, ManagedObjectContext &context,
                          const QString &code);

}  // namespace program
