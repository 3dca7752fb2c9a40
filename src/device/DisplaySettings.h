#pragma once

#include "device/SystemColourScheme.h"

#include <QObject>
#include <QSize>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <array>
#include <memory>

struct Folders;

/// How the program looks on this device: the theme, the size of its text, and the window's size.
/// Remembered in `display.ini` in the home folder; only until the end, with a line in the log, if
/// there is no room for it or somebody else has put something in its place.
class DisplaySettings : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("There is one, the window's")
  Q_PROPERTY(bool dark READ isDark NOTIFY changed)
  Q_PROPERTY(double textScale READ textScale NOTIFY changed)
  Q_PROPERTY(QSize windowSize READ windowSize WRITE setWindowSize NOTIFY changed)
  Q_PROPERTY(bool maximized READ isMaximized WRITE setMaximized NOTIFY changed)

 public:
  enum class Theme { System, Light, Dark };
  /// The text sizes to choose from, in percent.
  static constexpr std::array kTextSizes{100, 125, 150, 200};

  DisplaySettings(const Folders &folders, std::unique_ptr<SystemColourScheme> system);

  [[nodiscard]] Theme theme() const { return m_theme; }
  void setTheme(Theme theme);
  /// Whether the screen is dark, after the theme and the system.
  [[nodiscard]] bool isDark() const;

  /// In percent; one of kTextSizes.
  [[nodiscard]] int textSize() const { return m_textSize; }
  void setTextSize(int percent);
  /// 1 stands for 100 percent.
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
  /// Remembers a value for one of the members below.
  template <class Value>
  void choose(Value &member, const Value &value);

  QString m_file;
  std::unique_ptr<SystemColourScheme> m_system;
  Theme m_theme = Theme::System;
  int m_textSize = kTextSizes.front();
  QSize m_windowSize{1280, 800};
  bool m_isMaximized = false;
};
