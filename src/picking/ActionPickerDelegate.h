#pragma once

#include <QString>

/// Learns which action was chosen.
class ActionPickerDelegate {
 public:
  virtual ~ActionPickerDelegate() = default;
  virtual void selectedAction(const QString &title) = 0;
};
