#pragma once

#include "view/Colour.h"
#include "view/outlets/Outlet.h"

/// A button outlet: title, title colour, enabled state and border. On a touch, the screen calls the
/// controller's action.
class Button : public Outlet {
  Q_OBJECT
  QML_NAMED_ELEMENT(ButtonOutlet)
  QML_UNCREATABLE("An outlet belongs to its controller")
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QString titleColor READ titleColorName NOTIFY changed)
  Q_PROPERTY(bool enabled READ isEnabled NOTIFY changed)
  Q_PROPERTY(double borderWidth READ borderWidth NOTIFY changed)

 public:
  using Outlet::Outlet;

  [[nodiscard]] QString title() const { return m_title; }
  void setTitle(const QString &title) { change(m_title, title); }

  [[nodiscard]] Colour titleColor() const { return m_titleColor; }
  [[nodiscard]] QString titleColorName() const { return colourName(m_titleColor); }
  void setTitleColor(Colour colour) { change(m_titleColor, colour); }

  [[nodiscard]] bool isEnabled() const { return m_enabled; }
  void setEnabled(bool enabled) { change(m_enabled, enabled); }

  /// The width of the border in points; 0 for none.
  [[nodiscard]] double borderWidth() const { return m_borderWidth; }
  void setBorderWidth(double width) { change(m_borderWidth, width); }

 private:
  QString m_title;
  Colour m_titleColor = Colour::blue;
  bool m_enabled = true;
  double m_borderWidth = 0.0;
};
