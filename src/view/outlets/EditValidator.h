#pragma once

#include "view/outlets/TextField.h"

#include <QValidator>
#include <QtQml/qqmlregistration.h>

/// A validator that asks the delegate of a text field before every edit in its item: by keys, paste
/// or input method.
class EditValidator : public QValidator {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(TextField *outlet MEMBER m_outlet NOTIFY outletChanged)
  /// The item's selection before the edit.
  Q_PROPERTY(int selectionStart MEMBER m_selectionStart NOTIFY selectionChanged)
  Q_PROPERTY(int selectionEnd MEMBER m_selectionEnd NOTIFY selectionChanged)

 public:
  using QValidator::QValidator;

  State validate(QString &text, int &position) const override;

 signals:
  void outletChanged();
  void selectionChanged();

 private:
  TextField *m_outlet = nullptr;
  int m_selectionStart = 0;
  int m_selectionEnd = 0;
};
