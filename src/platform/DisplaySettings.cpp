#include "platform/DisplaySettings.h"

#include "platform/Folders.h"

#include <QFile>

#include <algorithm>

namespace {

const QString kTheme = QStringLiteral("theme");
const QString kTextSize = QStringLiteral("textSize");
const QString kWindowSize = QStringLiteral("windowSize");
const QString kMaximized = QStringLiteral("maximized");

const QString kLight = QStringLiteral("light");
const QString kDark = QStringLiteral("dark");
const QString kSystem = QStringLiteral("system");

constexpr QSize kFirstWindowSize{1280, 800};

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

}  // namespace

DisplaySettings::DisplaySettings(const Folders &folders, std::unique_ptr<SystemColourScheme> system)
    : m_file(folders.home + QStringLiteral("/display.ini"), QSettings::IniFormat),
      m_system(std::move(system)) {
  connect(m_system.get(), &SystemColourScheme::changed, this, &DisplaySettings::changed);
}

DisplaySettings::Theme DisplaySettings::theme() const {
  const QString word = m_file.value(kTheme).toString();
  if (word == kDark) {
    return Theme::Dark;
  }
  return word == kLight ? Theme::Light : Theme::System;
}

void DisplaySettings::setTheme(Theme theme) {
  store(kTheme, wordFor(theme));
}

bool DisplaySettings::isDark() const {
  return theme() == Theme::System ? m_system->isDark() : theme() == Theme::Dark;
}

int DisplaySettings::textSize() const {
  const int percent = m_file.value(kTextSize).toInt();
  return std::find(kTextSizes.begin(), kTextSizes.end(), percent) == kTextSizes.end()
             ? kTextSizes.front()
             : percent;
}

void DisplaySettings::setTextSize(int percent) {
  store(kTextSize, percent);
}

QSize DisplaySettings::windowSize() const {
  const QSize size = m_file.value(kWindowSize).toSize();
  return size.isEmpty() ? kFirstWindowSize : size;
}

void DisplaySettings::setWindowSize(QSize size) {
  store(kWindowSize, size);
}

bool DisplaySettings::isMaximized() const {
  return m_file.value(kMaximized).toBool();
}

void DisplaySettings::setMaximized(bool isMaximized) {
  store(kMaximized, isMaximized);
}

void DisplaySettings::store(const QString &key, const QVariant &value) {
  if (m_file.value(key) != value) {
    m_file.setValue(key, value);
    m_file.sync();
    QFile::setPermissions(m_file.fileName(), QFile::ReadOwner | QFile::WriteOwner);
    emit changed();
  }
}
