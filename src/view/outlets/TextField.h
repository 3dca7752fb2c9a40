#pragma once

#include "base/WeakDelegate.h"
#include "view/outlets/Outlet.h"

class TextField;

/// Handles the Return key of a text field and decides which edits it accepts.
class TextFieldDelegate {
 public:
  virtual ~TextFieldDelegate() = default;

  /// Handles the Return key in `field`. The result is not used.
  virtual bool textFieldShouldReturn(TextField &field) = 0;

  /// Returns true if the `length` characters of `field` from position `location` can be replaced
  /// with `replacement`. Called before every edit by keys, paste or input method.
  virtual bool shouldChangeCharactersInRange(const TextField & /*field*/, qsizetype /*location*/,
                                             qsizetype /*length*/,
                                             const QString & /*replacement*/) {
    return true;
  }
};

/// A text field outlet. The field with the keyboard focus, at most one per window, is the first
/// responder.
class TextField : public Outlet {
  Q_OBJECT
  QML_NAMED_ELEMENT(TextFieldOutlet)
  QML_UNCREATABLE("An outlet belongs to its controller")
  Q_PROPERTY(QString text READ text NOTIFY changed)
  Q_PROPERTY(bool enabled READ isEnabled NOTIFY enabledChanged)
  Q_PROPERTY(bool firstResponder READ isFirstResponder WRITE setFirstResponder NOTIFY changed)

 public:
  using Outlet::Outlet;

  [[nodiscard]] QString text() const { return m_text; }
  void setText(const QString &text) { change(m_text, text); }

  [[nodiscard]] bool isEnabled() const { return m_enabled; }
  void setEnabled(bool enabled) {
    if (m_enabled != enabled) {
      m_enabled = enabled;
      // A separate signal: disabling the item moves the keyboard focus, which would change
      // `firstResponder` while bindings are still handling `changed`.
      emit enabledChanged();
      emit changed();
    }
  }

  [[nodiscard]] bool isFirstResponder() const { return m_firstResponder; }
  /// Called by the screen when its item gains or loses the keyboard focus.
  void setFirstResponder(bool firstResponder) { change(m_firstResponder, firstResponder); }

  /// Returns true if this field accepts scanned codes.
  [[nodiscard]] bool takesScans() const { return m_takesScans; }
  void setTakesScans(bool takesScans) { m_takesScans = takesScans; }

  /// Requests the keyboard focus.
  void becomeFirstResponder();
  /// Gives up the keyboard focus.
  void resignFirstResponder();

  void setDelegate(WeakDelegate<TextFieldDelegate> delegate) { m_delegate = delegate; }

  /// Returns true if the delegate allows the edit that turns the field's text into `text`. The
  /// characters from `selectionStart` up to `selectionEnd` were selected before the edit.
  [[nodiscard]] bool acceptsEdit(const QString &text, qsizetype selectionStart,
                                 qsizetype selectionEnd) const;

  /// Sets the text after an edit by keys, paste or input method, and emits `editingChanged`.
  Q_INVOKABLE void edit(const QString &text);
  /// Handles the Return key.
  Q_INVOKABLE void pressReturn();

 signals:
  void enabledChanged();
  void keyboardRequested();
  void keyboardResigned();
  void editingChanged();

 private:
  QString m_text;
  bool m_enabled = true;
  bool m_firstResponder = false;
  bool m_takesScans = true;
  WeakDelegate<TextFieldDelegate> m_delegate;
};
