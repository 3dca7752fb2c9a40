#include "view/BusyState.h"

void BusyState::begin(const QString &title) {
  m_isActive = true;
  m_title = title;
  m_progressText.clear();
  m_progress = -1.0;
  emit changed();
}

void BusyState::setProgress(const QString &text, double progress) {
  m_progressText = text;
  m_progress = progress;
  emit changed();
}

void BusyState::end() {
  m_isActive = false;
  emit changed();
}
