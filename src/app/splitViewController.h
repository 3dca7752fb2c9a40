#pragma once

#include "view/NavigationController.h"
#include "view/ViewController.h"
#include "view/outlets/TextField.h"

#include <algorithm>
#include <array>

/// The picking screen: contains the master pane, in a navigation controller, and the detail pane.
class splitViewController : public ViewController {
  Q_OBJECT
  QML_NAMED_ELEMENT(SplitViewController)
  QML_UNCREATABLE("Controllers come from the storyboard")
  Q_PROPERTY(ViewController *master READ master CONSTANT)
  Q_PROPERTY(ViewController *detail READ detail CONSTANT)

 public:
  splitViewController(ViewController *master, ViewController *detail, Environment &environment,
                      QObject *parent)
      : ViewController(QStringLiteral("splitViewController"), environment, parent) {
    addChildViewController(new NavigationController(master, environment, this));
    addChildViewController(detail);
  }

  [[nodiscard]] ViewController *master() const {
    return qobject_cast<NavigationController *>(childViewControllers().at(0))->topViewController();
  }
  [[nodiscard]] ViewController *detail() const { return childViewControllers().at(1); }

  /// Returns the detail pane's scan field, or else the master pane's; nullptr while a pane is
  /// covered.
  [[nodiscard]] TextField *scanField() const override {
    if (master()->isCovered() || detail()->isCovered()) {
      return nullptr;
    }
    TextField *field = detail()->scanField();
    return field != nullptr ? field : master()->scanField();
  }
  /// While the summary covers one pane, the fields of the other one still take scans.
  [[nodiscard]] bool takesScanIn(const TextField &field) const override {
    return std::ranges::all_of(std::array{master(), detail()}, [&](const ViewController *pane) {
      const bool isUnderOverlay = pane->overlay() != nullptr && field.parent() == pane;
      return pane->presentedViewController() == nullptr && !isUnderOverlay;
    });
  }
};
