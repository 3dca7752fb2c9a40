#pragma once

#include "view/ViewController.h"

/// A container that shows one screen: its last child.
class NavigationController : public ViewController {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Controllers come from the storyboard")
  Q_PROPERTY(ViewController *topViewController READ topViewController CONSTANT)

 public:
  NavigationController(ViewController *top, Environment &environment, QObject *parent)
      : ViewController(QStringLiteral("NavigationController"), environment, parent) {
    addChildViewController(top);
  }

  [[nodiscard]] ViewController *topViewController() const { return childViewControllers().last(); }
};
