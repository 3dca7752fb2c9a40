#pragma once

#include <QObject>
#include <QString>
#include <QTime>

#include <deque>

/// The outcome of a scan.
enum class ScanOutcome {
  /// The code is a line of the open box; no quantity has been confirmed yet.
  Found,
  /// The code is a line of the open box, and a quantity has been confirmed.
  Booked,
  /// The code is not in the open box, but in a loose pick or the catalogue.
  Loose,
  Unknown,
  /// No field accepted scans.
  Refused
};

/// A scan made during the running picking.
struct Scan {
  /// The time of day in the device's zone.
  QTime time = {};
  QString code = {};
  ScanOutcome outcome = ScanOutcome::Refused;
  /// The number of the line in the open box, starting at 1; 0 if there is none.
  int line = 0;
};

/// The last scans of the running picking, newest first. They are not stored.
class ScanTrail : public QObject {
  Q_OBJECT

 public:
  /// The maximum number of scans; older ones are dropped.
  static constexpr std::size_t kCapacity = 50;

  [[nodiscard]] const std::deque<Scan> &scans() const { return m_scans; }

  void add(const Scan &scan);
  /// Changes the newest scan with the outcome `Found`, if there is one, to `Booked`.
  void bookLatestFound();
  void clear();

 signals:
  void changed();

 private:
  std::deque<Scan> m_scans;
};
