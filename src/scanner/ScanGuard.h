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

/// An event filter that routes the codes of a keyboard-mode scanner to the field that takes scans.
///
/// A focused field that takes scans gets every key immediately. Anywhere else, characters are held
/// until it is clear whether a person or a scanner sent them. A person's characters are then
/// delivered, after an imperceptible delay. A scanner's code goes to the field that currently takes
/// scans; if there is none, or if the code's Return is missing, the code is refused. No other item
/// receives characters of a code.
///
/// A code replaces older text in its field, such as the previous box number.
class ScanGuard : public QObject {
  Q_OBJECT

 public:
  /// Filters the key events of `window`, which shows `state`. Both must outlive this object.
  ScanGuard(QWindow &window, Window &state);
  ~ScanGuard() override;
  ScanGuard(const ScanGuard &) = delete;
  ScanGuard &operator=(const ScanGuard &) = delete;

  /// Returns true while keys are held.
  [[nodiscard]] bool isHolding() const { return !m_held.empty(); }

  bool eventFilter(QObject *watched, QEvent *event) override;

 protected:
  void timerEvent(QTimerEvent *event) override;

 private:
  bool filterPress(const QKeyEvent &key);
  /// Handles a mouse or touch press: delivers the characters typed before it, unless they could be
  /// a code.
  void press();
  bool filterRelease(const QKeyEvent &key);
  bool filterReturn(const QKeyEvent &key);
  void hold(const QKeyEvent &key);
  /// How long to wait for the next key before the held ones are released, in milliseconds.
  [[nodiscard]] int holdingTime() const;
  /// Delivers the held keys in order.
  void letGo();
  /// Delivers a person's held keys and returns true; refuses a scanner's and returns false.
  bool release(bool isScanners);
  void drop();
  void placeScan(const QString &code);
  /// The field with the keyboard focus if it takes scans now; otherwise nullptr.
  [[nodiscard]] TextField *focusedScanField() const;

  QWindow &m_window;
  Window &m_state;
  BurstDetector m_burst;
  std::vector<std::unique_ptr<QKeyEvent>> m_held;
  QBasicTimer m_timer;
  QElapsedTimer m_sinceLastKey;
  bool m_isLettingGo = false;
};
