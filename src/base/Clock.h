#pragma once

#include <QDateTime>
#include <QTimeZone>

/// The time, and the zone that the device stands in.
class Clock {
 public:
  virtual ~Clock() = default;
  /// The current time, in UTC.
  [[nodiscard]] virtual QDateTime now() const = 0;
  /// The device's named zone, as it is set at the time of the call.
  [[nodiscard]] virtual QTimeZone localZone() const = 0;
  /// The time of day where the device stands.
  [[nodiscard]] QTime timeOfDay() const { return now().toTimeZone(localZone()).time(); }
};

class SystemClock : public Clock {
 public:
  [[nodiscard]] QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }
  [[nodiscard]] QTimeZone localZone() const override { return QTimeZone::systemTimeZone(); }
};
