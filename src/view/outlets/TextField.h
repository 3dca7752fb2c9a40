#pragma once

#include "base/WeakDelegate.h"
#include "view/outlets/Outlet.h"

class TextField;

/// Decides what a text field accepts.
class TextFieldDelegate {
 public:
  virtual ~TextFieldDelegate() = default;

  /// The return key was pressed in `field`; the answer says whether the field may return.
  virtual bool textFieldShouldReturn(TextField &field) = 0;

  /// Whether the `length` characters of `field` from `location` on may be replaced by
  /// `replacement`. Asked before every edit by keys, paste or input method.
  virtual bool shouldChangeCharactersInRange(const TextField & /*field*/, qsizetype /*location*/,
                                             qsizetype /*length*/,
                                             const QString & /*replacement*/) {
    return true;
  }
};

/// A text that can be typed into. At most one field of a window has the keyboard; it is called the
/// first responder.
class TextField : public Outlet {
  Q_OBJECT
  QML_NAMED_ELEMENT(TextFieldOutlet)
  QML_UNCREATABLE("An outlet belongs to its controller")
  Q_PROPERTY(QString text READ text NOTIFY changed)
  Q_PROPERTY(bool enabled READ isEnabled NOTIFY enabledChanged)
  Q_PROPERTY(bool takesScans READ takesScans NOTIFY changed)
  Q_PROPERTY(bool firstResponder READ isFirstResponder WRITE setFirstResponder NOTIFY changed)

 public:
  using Outlet::Outlet;

  [[nodiscard]] QString text() const { return m_text; }
  void setText(const QString &text) { change(m_text, text); }

  [[nodiscard]] bool isEnabled() const { return m_enabled; }
  void setEnabled(bool enabled) {
    if (m_enabled != enabled) {
      m_enabled = enabled;
      // A signal of its own: an item that is disabled loses the keyboard, which changes
      // `firstResponder` while bindings to `changed` are still being told.
      emit enabledChanged();
      emit changed();
    }
  }

  [[nodiscard]] bool isFirstResponder() const { return m_firstResponder; }
  /// For the screen: tells the outlet where the keyboard went.
  void setFirstResponder(bool firstResponder) { change(m_firstResponder, firstResponder); }

  /// Whether what a scanner types belongs into the field.
  [[nodiscard]] bool takesScans() const { return m_takesScans; }
  void setTakesScans(bool takesScans) { change(m_takesScans, takesScans); }

  /// Asks for the keyboard.
  void becomeFirstResponder();
  /// Gives the keyboard away.
  void resignFirstResponder();

  void setDelegate(WeakDelegate<TextFieldDelegate> delegate) { m_delegate = delegate; }

  /// Whether the field's text may become `text` by an edit made while the characters from
  /// `selectionStart` to `selectionEnd` were selected.
  [[nodiscard]] bool acceptsEdit(const QString &text, qsizetype selectionStart,
                                 qsizetype selectionEnd) const;

  /// An edit by keys, paste or input method has made the text `text`.
  Q_INVOKABLE void edit(const QString &text);
  /// The return key.
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
