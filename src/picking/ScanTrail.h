#pragma once

#include <QObject>
#include <QString>
#include <QTime>

#include <deque>

/// What became of a scan.
enum class ScanOutcome {
  /// A line was found; its quantity has not been confirmed.
  Found,
  /// The quantity of the line was confirmed.
  Booked,
  /// Not in the box, but picked loose before or in the catalogue.
  Loose,
  Unknown,
  /// Came where no scan belongs.
  Refused
};

/// A scan of the running picking.
struct Scan {
  /// The time of day where the device stands.
  QTime time = {};
  QString code = {};
  ScanOutcome outcome = ScanOutcome::Refused;
  /// The line in the open box, from 1 on; 0 for none.
  int line = 0;
};

/// The last scans of the running picking, the latest first. Kept in memory alone.
class ScanTrail : public QObject {
  Q_OBJECT

 public:
  /// More than these are not kept.
  static constexpr std::size_t kCapacity = 50;

  [[nodiscard]] const std::deque<Scan> &scans() const { return m_scans; }

  void add(const Scan &scan);
  /// The quantity of the line that was found last was confirmed.
  void bookLatestFound();
  /// A new picking begins.
  void clear();

 signals:
  void changed();

 private:
  std::deque<Scan> m_scans;
};
