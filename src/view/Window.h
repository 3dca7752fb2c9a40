#pragma once

#include "device/DisplaySettings.h"
#include "view/AlertStack.h"
#include "view/BusyState.h"
#include "view/ViewController.h"

#include <QObject>
#include <QPointF>
#include <QtQml/qqmlregistration.h>

class Clock;
struct Environment;

/// The state of the application window: the root screen, the alerts and the busy overlay above it,
/// and the display settings.
class Window : public QObject {
  Q_OBJECT
  QML_NAMED_ELEMENT(ApplicationWindowState)
  QML_UNCREATABLE("Created by the application delegate")
  Q_PROPERTY(ViewController *rootViewController READ rootViewController CONSTANT)
  Q_PROPERTY(AlertStack *alerts READ alerts CONSTANT)
  Q_PROPERTY(BusyState *busy READ busy CONSTANT)
  Q_PROPERTY(DisplaySettings *display READ display CONSTANT)
  Q_PROPERTY(bool fullScreen MEMBER fullScreen CONSTANT)
  Q_PROPERTY(bool onScreenKeyboard MEMBER onScreenKeyboard CONSTANT)

 public:
  enum class StatusBarStyle { Default, LightContent };

  /// Both must outlive the window.
  Window(ViewController &root, Environment &environment);

  /// Show a frameless full-screen window.
  bool fullScreen = false;
  /// Show an on-screen keyboard inside the window.
  bool onScreenKeyboard = false;

  [[nodiscard]] ViewController *rootViewController() const { return &m_root; }
  [[nodiscard]] AlertStack *alerts() const;
  [[nodiscard]] BusyState *busy() const;
  [[nodiscard]] DisplaySettings *display() const;
  [[nodiscard]] const Clock &clock() const;

  /// The field for a scan that arrives while another item has the keyboard focus; nullptr if no
  /// scan is accepted now.
  [[nodiscard]] TextField *scanField() const;
  /// Returns true if `field`, which has the keyboard focus, takes scans now.
  [[nodiscard]] bool takesScanIn(const TextField &field) const;
  /// Rejects the scan of `code`: plays the error tone and notifies the screens.
  void refuseScan(const QString &code);

  /// Announces a press that is not a window event, such as one by a screen reader. Call it before
  /// the press.
  Q_INVOKABLE void press() { emit pressing(); }
  /// Announces that `part`, an item, has appeared or that a touch on it now does something else;
  /// nullptr announces it of the whole window.
  Q_INVOKABLE void change(QObject *part) { emit changed(part); }

  /// Announces that a tap or click at `place` in the window was handled.
  void tap(QPointF place) { emit tapped(place); }

  /// For a platform that draws a status bar above the window.
  [[nodiscard]] StatusBarStyle statusBarStyle() const { return m_statusBarStyle; }
  void setStatusBarStyle(StatusBarStyle style) { m_statusBarStyle = style; }

 signals:
  void pressing();
  void changed(QObject *part);
  void tapped(QPointF place);

 private:
  /// Returns true if an alert or the busy overlay is above the screens.
  [[nodiscard]] bool isCovered() const;

  ViewController &m_root;
  Environment &m_environment;
  StatusBarStyle m_statusBarStyle = StatusBarStyle::Default;
};
