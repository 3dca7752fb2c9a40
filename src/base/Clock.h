#pragma once

#include <QDateTime>
#include <QTimeZone>

#include <chrono>

/// The current time and the device's time zone.
class Clock {
 public:
  virtual ~Clock() = default;
  /// The current time, in UTC.
  [[nodiscard]] virtual QDateTime now() const = 0;
  /// The device's named time zone as currently set; it can change between calls.
  [[nodiscard]] virtual QTimeZone localZone() const = 0;
  /// The time since any fixed point. It measures intervals: no change of the date affects it.
  [[nodiscard]] virtual std::chrono::milliseconds monotonic() const = 0;
  /// The current time of day in the local zone.
  [[nodiscard]] QTime timeOfDay() const { return now().toTimeZone(localZone()).time(); }
};

class SystemClock : public Clock {
 public:
  [[nodiscard]] QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }
  [[nodiscard]] QTimeZone localZone() const override { return QTimeZone::systemTimeZone(); }
  [[nodiscard]] std::chrono::milliseconds monotonic() const override {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
  }
};
