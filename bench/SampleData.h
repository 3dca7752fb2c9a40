#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>

class ManagedObjectContext;

/// Made-up data, the same on every run. Codes and texts have the shapes that real ones have.
namespace sample {

/// How large a delivery is.
struct DeliverySize {
  std::size_t lines = 0;
  std::size_t boxes = 0;
};

/// The item code of article `index`; no two are the same.
QString itemCode(std::size_t index);
/// The EAN-13 of article `index`; no two are the same.
QString barcode(std::size_t index);

/// The answer to a catalogue download, of `articles` articles and some 100 bytes each.
QByteArray catalogueJson(std::size_t articles);
/// The answer to the lookup of the delivery "4711", order "A1". The lines of a box follow each
/// other.
QByteArray deliveryJson(const DeliverySize &size);

/// Stores picks of that delivery: one of each line until there are `picks`.
void storePicks(ManagedObjectContext &context, const DeliverySize &size, std::size_t picks);
/// Stores `picks` picks of `deliveries` deliveries, every other one of them sent.
void storeHistory(ManagedObjectContext &context, std::size_t picks, std::size_t deliveries);

}  // namespace sample
