#pragma once

#include "view/outlets/Outlet.h"

/// A spinner that shows running work.
class ActivityIndicator : public Outlet {
  Q_OBJECT
  QML_NAMED_ELEMENT(ActivityIndicatorOutlet)
  QML_UNCREATABLE("An outlet belongs to its controller")
  Q_PROPERTY(bool animating READ isAnimating NOTIFY changed)

 public:
  using Outlet::Outlet;

  [[nodiscard]] bool isAnimating() const { return m_animating; }
  void startAnimating() { change(m_animating, true); }
  void stopAnimating() { change(m_animating, false); }

 private:
  bool m_animating = false;
};
