#include "device/DisplaySettings.h"

#include "base/Folders.h"
#include "base/OwnFiles.h"

#include <QDebug>
#include <QSettings>
#include <QVariant>

#include <algorithm>

namespace {

const QString kTheme = QStringLiteral("theme");
const QString kTextSize = QStringLiteral("textSize");
const QString kWindowSize = QStringLiteral("windowSize");
const QString kMaximized = QStringLiteral("maximized");

const QString kLight = QStringLiteral("light");
const QString kDark = QStringLiteral("dark");
const QString kSystem = QStringLiteral("system");

QString wordFor(DisplaySettings::Theme theme) {
  switch (theme) {
    case DisplaySettings::Theme::Light:
      return kLight;
    case DisplaySettings::Theme::Dark:
      return kDark;
    case DisplaySettings::Theme::System:
      break;
  }
  return kSystem;
}

DisplaySettings::Theme themeFor(const QString &word) {
  if (word == kDark) {
    return DisplaySettings::Theme::Dark;
  }
  return word == kLight ? DisplaySettings::Theme::Light : DisplaySettings::Theme::System;
}

}  // namespace

DisplaySettings::DisplaySettings(const Folders &folders, std::unique_ptr<SystemColourScheme> system)
    : m_file(folders.home + QStringLiteral("/display.ini")), m_system(std::move(system)) {
  read();
  connect(m_system.get(), &SystemColourScheme::changed, this, &DisplaySettings::changed);
}

void DisplaySettings::setTheme(Theme theme) {
  choose(m_theme, theme);
}

bool DisplaySettings::isDark() const {
  return m_theme == Theme::System ? m_system->isDark() : m_theme == Theme::Dark;
}

void DisplaySettings::setTextSize(int percent) {
  choose(m_textSize, percent);
}

void DisplaySettings::setWindowSize(QSize size) {
  choose(m_windowSize, size);
}

void DisplaySettings::setMaximized(bool isMaximized) {
  choose(m_isMaximized, isMaximized);
}

template <class Value>
void DisplaySettings::choose(Value &member, const Value &value) {
  if (member == value) {
    return;
  }
  member = value;
  write();
  emit changed();
}

void DisplaySettings::read() {
  const QString objection = claimFile(m_file);
  if (!objection.isEmpty()) {
    qWarning("File %s not used: %s.", qUtf8Printable(m_file), qUtf8Printable(objection));
    return;
  }
  const QSettings file(m_file, QSettings::IniFormat);
  m_theme = themeFor(file.value(kTheme).toString());
  const int percent = file.value(kTextSize).toInt();
  if (std::find(kTextSizes.begin(), kTextSizes.end(), percent) != kTextSizes.end()) {
    m_textSize = percent;
  }
  const QSize size = file.value(kWindowSize).toSize();
  if (!size.isEmpty()) {
    m_windowSize = size;
  }
  m_isMaximized = file.value(kMaximized).toBool();
}

void DisplaySettings::write() const {
  // QSettings would leave a truncated file on a full disk.
  const QString text = QStringLiteral("[General]\n%1=%2\n%3=%4\n%5=@Size(%6 %7)\n%8=%9\n")
                           .arg(kTheme, wordFor(m_theme), kTextSize)
                           .arg(m_textSize)
                           .arg(kWindowSize)
                           .arg(m_windowSize.width())
                           .arg(m_windowSize.height())
                           .arg(kMaximized, QVariant(m_isMaximized).toString());
  const QString failure = replaceFile(m_file, text.toUtf8());
  if (!failure.isEmpty()) {
    qWarning("File %s not written: %s.", qUtf8Printable(m_file), qUtf8Printable(failure));
  }
}
