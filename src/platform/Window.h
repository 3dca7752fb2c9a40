#pragma once

#include "platform/AlertStack.h"
#include "platform/BusyState.h"
#include "platform/ViewController.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// The application window: its root screen and the alerts above all screens.
class Window : public QObject {
  Q_OBJECT
  QML_NAMED_ELEMENT(ApplicationWindowState)
  QML_UNCREATABLE("There is one")
  Q_PROPERTY(ViewController *rootViewController READ rootViewController CONSTANT)
  Q_PROPERTY(AlertStack *alerts READ alerts CONSTANT)
  Q_PROPERTY(BusyState *busy READ busy CONSTANT)

 public:
  enum class StatusBarStyle { Default, LightContent };

  /// None of them is owned.
  Window(ViewController *root, AlertStack *alerts, BusyState *busy)
      : m_root(root), m_alerts(alerts), m_busy(busy) {}

  [[nodiscard]] ViewController *rootViewController() const { return m_root; }
  [[nodiscard]] AlertStack *alerts() const { return m_alerts; }
  [[nodiscard]] BusyState *busy() const { return m_busy; }

  [[nodiscard]] StatusBarStyle statusBarStyle() const { return m_statusBarStyle; }
  [[nodiscard]] bool isStatusBarContentLight() const {
    return m_statusBarStyle == StatusBarStyle::LightContent;
  }
  void setStatusBarStyle(StatusBarStyle style) {
    m_statusBarStyle = style;
    emit statusBarStyleChanged();
  }

 signals:
  void statusBarStyleChanged();

 private:
  ViewController *m_root;
  AlertStack *m_alerts;
  BusyState *m_busy;
  StatusBarStyle m_statusBarStyle = StatusBarStyle::Default;
};
