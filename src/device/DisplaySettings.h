#pragma once

#include "device/SystemColourScheme.h"

#include <QObject>
#include <QSize>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <array>
#include <memory>

struct Folders;

/// The display settings of this device: theme, text size and window size.
///
/// They are stored in `display.ini` in the home folder. If that file cannot be written or is not a
/// regular file owned by this user, the reason is logged and the settings last until the program
/// ends.
class DisplaySettings : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Provided by the window")
  Q_PROPERTY(bool dark READ isDark NOTIFY changed)
  Q_PROPERTY(double textScale READ textScale NOTIFY changed)
  Q_PROPERTY(QSize windowSize READ windowSize WRITE setWindowSize NOTIFY changed)
  Q_PROPERTY(bool maximized READ isMaximized WRITE setMaximized NOTIFY changed)

 public:
  enum class Theme { System, Light, Dark };
  /// The available text sizes, in percent.
  static constexpr std::array kTextSizes{100, 125, 150, 200};

  DisplaySettings(const Folders &folders, std::unique_ptr<SystemColourScheme> system);

  [[nodiscard]] Theme theme() const { return m_theme; }
  void setTheme(Theme theme);
  /// Returns true for the dark theme, or for the system theme while the system prefers dark.
  [[nodiscard]] bool isDark() const;

  /// The text size in percent; one of kTextSizes.
  [[nodiscard]] int textSize() const { return m_textSize; }
  void setTextSize(int percent);
  /// The text size as a factor: 1.0 for 100 percent.
  [[nodiscard]] double textScale() const { return textSize() / 100.0; }

  /// The window's size while it is not maximized, in points.
  [[nodiscard]] QSize windowSize() const { return m_windowSize; }
  void setWindowSize(QSize size);
  [[nodiscard]] bool isMaximized() const { return m_isMaximized; }
  void setMaximized(bool isMaximized);

 signals:
  void changed();

 private:
  void read();
  void write() const;
  /// Sets and stores one of the members below.
  template <class Value>
  void choose(Value &member, const Value &value);

  QString m_file;
  std::unique_ptr<SystemColourScheme> m_system;
  Theme m_theme = Theme::System;
  int m_textSize = kTextSizes.front();
  QSize m_windowSize{1280, 800};
  bool m_isMaximized = false;
};
