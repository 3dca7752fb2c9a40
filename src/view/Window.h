#pragma once

#include "device/DisplaySettings.h"
#include "view/AlertStack.h"
#include "view/BusyState.h"
#include "view/ViewController.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

struct Environment;

/// The application window: its root screen, the alerts above all screens, and how it looks.
class Window : public QObject {
  Q_OBJECT
  QML_NAMED_ELEMENT(ApplicationWindowState)
  QML_UNCREATABLE("There is one")
  Q_PROPERTY(ViewController *rootViewController READ rootViewController CONSTANT)
  Q_PROPERTY(AlertStack *alerts READ alerts CONSTANT)
  Q_PROPERTY(BusyState *busy READ busy CONSTANT)
  Q_PROPERTY(DisplaySettings *display READ display CONSTANT)
  Q_PROPERTY(bool fullScreen MEMBER fullScreen CONSTANT)
  Q_PROPERTY(bool onScreenKeyboard MEMBER onScreenKeyboard CONSTANT)

 public:
  enum class StatusBarStyle { Default, LightContent };

  /// Neither is owned.
  Window(ViewController &root, Environment &environment);

  /// Whether the window fills the screen and has no frame.
  bool fullScreen = false;
  /// Whether the window has a keyboard of its own.
  bool onScreenKeyboard = false;

  [[nodiscard]] ViewController *rootViewController() const { return &m_root; }
  [[nodiscard]] AlertStack *alerts() const;
  [[nodiscard]] BusyState *busy() const;
  [[nodiscard]] DisplaySettings *display() const;

  /// The field that a scan goes to which comes while another item has the keyboard; null where a
  /// scan does not belong.
  [[nodiscard]] TextField *scanField() const;
  /// A scan came where none belongs: the error tone sounds, and the screens note it. Nothing else
  /// changes.
  void refuseScan(const QString &code);

  /// Something is about to be pressed by other means than an event of the window.
  Q_INVOKABLE void press() { emit pressing(); }

  [[nodiscard]] StatusBarStyle statusBarStyle() const { return m_statusBarStyle; }
  [[nodiscard]] bool isStatusBarContentLight() const {
    return m_statusBarStyle == StatusBarStyle::LightContent;
  }
  void setStatusBarStyle(StatusBarStyle style) {
    m_statusBarStyle = style;
    emit statusBarStyleChanged();
  }

 signals:
  void pressing();
  void statusBarStyleChanged();

 private:
  ViewController &m_root;
  Environment &m_environment;
  StatusBarStyle m_statusBarStyle = StatusBarStyle::Default;
};
