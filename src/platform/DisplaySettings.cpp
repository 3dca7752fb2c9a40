#include "platform/DisplaySettings.h"

#include "platform/Folders.h"
#include "platform/OwnFiles.h"

#include <QDebug>
#include <QSettings>

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

bool isOurs(const QString &file) {
  const QString objection = claimFile(file);
  if (!objection.isEmpty()) {
    qWarning("File %s not used: %s.", qUtf8Printable(file), qUtf8Printable(objection));
  }
  return objection.isEmpty();
}

}  // namespace

DisplaySettings::DisplaySettings(const Folders &folders, std::unique_ptr<SystemColourScheme> system)
    : m_file(folders.home + QStringLiteral("/display.ini")), m_system(std::move(system)) {
  if (mayUseFile()) {
    const QSettings file(m_file, QSettings::IniFormat);
    for (const QString &key : {kTheme, kTextSize, kWindowSize, kMaximized}) {
      m_values[key] = file.value(key);
    }
  }
  connect(m_system.get(), &SystemColourScheme::changed, this, &DisplaySettings::changed);
}

DisplaySettings::Theme DisplaySettings::theme() const {
  const QString word = m_values.value(kTheme).toString();
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
  const int percent = m_values.value(kTextSize).toInt();
  return std::find(kTextSizes.begin(), kTextSizes.end(), percent) == kTextSizes.end()
             ? kTextSizes.front()
             : percent;
}

void DisplaySettings::setTextSize(int percent) {
  store(kTextSize, percent);
}

QSize DisplaySettings::windowSize() const {
  const QSize size = m_values.value(kWindowSize).toSize();
  return size.isEmpty() ? kFirstWindowSize : size;
}

void DisplaySettings::setWindowSize(QSize size) {
  store(kWindowSize, size);
}

bool DisplaySettings::isMaximized() const {
  return m_values.value(kMaximized).toBool();
}

void DisplaySettings::setMaximized(bool isMaximized) {
  store(kMaximized, isMaximized);
}

bool DisplaySettings::mayUseFile() const {
  // Qt locks the file by another beside it.
  return isOurs(m_file) && isOurs(m_file + QStringLiteral(".lock"));
}

void DisplaySettings::store(const QString &key, const QVariant &value) {
  if (m_values.value(key) == value) {
    return;
  }
  m_values[key] = value;
  if (mayUseFile()) {
    QSettings file(m_file, QSettings::IniFormat);
    file.setValue(key, value);
    file.sync();
    claimFile(m_file);
  }
  emit changed();
}
