#pragma once

#include "scanner/BurstDetector.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

#include <memory>
#include <vector>

class QKeyEvent;
class QWindow;
class TextField;
class Window;

/// Sees to it that what a scanner types lands where scans belong, and nowhere else.
///
/// A field that takes scans gets every key at once. Anywhere else characters are held back until it
/// is clear who typed them: a person's go on after a moment that nobody notices; a scanner's go to
/// the field that takes scans at that time or, if there is none, are refused, as is a code without
/// its Return. No other item ever sees them, so there is nothing to take back.
///
/// In a field, a code takes the place of what was left there, as the number of the last box.
class ScanGuard : public QObject {
  Q_OBJECT

 public:
  /// Guards the keys of `window`, which shows `state`. Both outlive this object.
  ScanGuard(QWindow &window, Window &state);
  ~ScanGuard() override;
  ScanGuard(const ScanGuard &) = delete;
  ScanGuard &operator=(const ScanGuard &) = delete;

  /// Whether it is not yet clear who typed the last keys.
  [[nodiscard]] bool isHolding() const { return !m_held.empty(); }

  bool eventFilter(QObject *watched, QEvent *event) override;

 protected:
  void timerEvent(QTimerEvent *event) override;

 private:
  bool filterPress(const QKeyEvent &key);
  /// Something is pressed other than a key, and sees what was typed before it.
  void press();
  bool filterRelease(const QKeyEvent &key);
  bool filterReturn(const QKeyEvent &key);
  void hold(const QKeyEvent &key);
  /// How long to wait for the next key, in milliseconds.
  [[nodiscard]] int holdingTime() const;
  /// Lets go what was held back, in its order.
  void letGo();
  /// The same for what a person typed; refuses what a scanner did. Whether it was a person.
  bool release(bool isScanners);
  void drop();
  void placeScan(const QString &code);
  /// The field that has the keyboard, if a scan may go there now.
  [[nodiscard]] TextField *focusedScanField() const;

  QWindow &m_window;
  Window &m_state;
  BurstDetector m_burst;
  std::vector<std::unique_ptr<QKeyEvent>> m_held;
  QBasicTimer m_timer;
  QElapsedTimer m_sinceLastKey;
  bool m_isLettingGo = false;
};
