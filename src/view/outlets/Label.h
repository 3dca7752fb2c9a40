#pragma once

#include "device/OneLine.h"
#include "view/Colour.h"
#include "view/outlets/Outlet.h"

/// A label outlet: text, text colour and visibility. The screen shows a line break or another
/// control character as a blank.
class Label : public Outlet {
  Q_OBJECT
  QML_NAMED_ELEMENT(LabelOutlet)
  QML_UNCREATABLE("An outlet belongs to its controller")
  Q_PROPERTY(QString text READ line NOTIFY changed)
  Q_PROPERTY(QString textColor READ textColorName NOTIFY changed)
  Q_PROPERTY(bool hidden READ isHidden NOTIFY changed)

 public:
  using Outlet::Outlet;

  [[nodiscard]] QString text() const { return m_text; }
  /// The text as the screen shows it.
  [[nodiscard]] QString line() const { return inOneLine(m_text, u' '); }
  void setText(const QString &text) { change(m_text, text); }

  [[nodiscard]] Colour textColor() const { return m_textColor; }
  [[nodiscard]] QString textColorName() const { return colourName(m_textColor); }
  void setTextColor(Colour colour) { change(m_textColor, colour); }

  [[nodiscard]] bool isHidden() const { return m_hidden; }
  void setHidden(bool hidden) { change(m_hidden, hidden); }

  /// Draws the user's attention to the label for a moment.
  void drawAttention() { emit attentionDrawn(); }

 signals:
  void attentionDrawn();

 private:
  QString m_text;
  Colour m_textColor = Colour::black;
  bool m_hidden = false;
};
