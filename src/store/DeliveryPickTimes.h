#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <vector>

/// The first and last pick time of a delivery.
struct PickTimes {
  QDateTime mindatepicked;
  QDateTime maxdatepicked;
};

/// A delivery number with one value of `sent`. The times are those of all picks of the delivery,
/// with any `sent`.
struct DeliveryPickTimes {
  QString doc;
  std::int32_t sent = 0;
  PickTimes times;
};

/// Sets the times of every group to those of its whole delivery. The groups of one delivery must be
/// adjacent.
void widenToDeliveries(std::vector<DeliveryPickTimes> &groups);
