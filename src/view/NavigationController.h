#pragma once

#include "view/ViewController.h"

/// A container that shows one screen: its last child.
class NavigationController : public ViewController {
  Q_OBJECT

 public:
  NavigationController(ViewController *top, Environment &environment, QObject *parent)
      : ViewController(QStringLiteral("NavigationController"), environment, parent) {
    addChildViewController(top);
  }

  [[nodiscard]] ViewController *topViewController() const { return childViewControllers().last(); }
};
