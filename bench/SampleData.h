#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>

class ManagedObjectContext;

/// Synthetic data, the same on every run, with realistic codes and texts.
namespace sample {

struct DeliverySize {
  std::size_t lines = 0;
  std::size_t boxes = 0;
};

/// The unique item code of article `index`.
QString itemCode(std::size_t index);
/// The unique EAN-13 of article `index`.
QString barcode(std::size_t index);

/// The answer to a catalogue download: `articles` articles of about 100 bytes each.
QByteArray catalogueJson(std::size_t articles);
/// The answer to a lookup of the delivery "4711", order "A1". The lines of a box are adjacent.
QByteArray deliveryJson(const DeliverySize &size);

/// Stores `picks` picks of that delivery, spread evenly over its lines.
void storePicks(ManagedObjectContext &context, const DeliverySize &size, std::size_t picks);
/// Stores `picks` picks of `deliveries` deliveries, every other delivery as sent.
void storeHistory(ManagedObjectContext &context, std::size_t picks, std::size_t deliveries);

}  // namespace sample
