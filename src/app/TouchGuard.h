#pragma once

#include <QObject>
#include <QPointF>
#include <QPointer>

#include <chrono>
#include <optional>
#include <vector>

class Clock;
class QPointerEvent;
class QQuickItem;
class QQuickWindow;
class Window;

/// An event filter that refuses touches and clicks on what has just changed, such as the second tap
/// of a double tap, which was meant for the screen before.
///
/// A part of the window that appears, or whose touch does something else from now on, takes no
/// touch for `kQuietTime` after its first frame, and none that was pressed before that. A refused
/// touch has no effect until its last finger or button is released. Keys, scans and presses by a
/// screen reader are not filtered. The filter announces the taps that it lets through.
class TouchGuard : public QObject {
  Q_OBJECT

 public:
  static constexpr std::chrono::milliseconds kQuietTime{400};

  /// Filters the events of `window`, which shows `state`. Both must outlive this object.
  TouchGuard(QQuickWindow &window, Window &state);

  /// Returns true while a changed part has not been drawn; it takes no touch until then.
  [[nodiscard]] bool isWaitingForFrame() const;

  bool eventFilter(QObject *watched, QEvent *event) override;

 private:
  struct Change {
    QPointer<QQuickItem> part;
    /// The time of the first frame after the change.
    std::optional<std::chrono::milliseconds> drawn;
  };

  void note(QObject *part);
  void noteFrame();
  bool filter(QPointerEvent &event);
  [[nodiscard]] bool isQuiet(QPointF place) const;
  void announceTap(const QPointerEvent &event);
  /// Withdraws the touch of `event` from the items that have received a part of it.
  void cancel(const QPointerEvent &event);

  QQuickWindow &m_window;
  Window &m_state;
  const Clock &m_clock;
  std::vector<Change> m_changes;
  /// Where fingers or the pressed mouse are.
  std::vector<QPointF> m_places;
  /// Where the touch began, while it may still be a tap.
  std::optional<QPointF> m_tap;
  bool m_isRefused = false;
};
