#pragma once

#include <QString>

/// Receives the action that the user chooses.
class ActionPickerDelegate {
 public:
  virtual ~ActionPickerDelegate() = default;
  virtual void selectedAction(const QString &title) = 0;
};
