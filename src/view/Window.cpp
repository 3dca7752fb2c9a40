#include "view/Window.h"

#include "view/Environment.h"

Window::Window(ViewController &root, Environment &environment)
    : m_root(root), m_environment(environment) {}

AlertStack *Window::alerts() const {
  return &m_environment.alerts;
}

BusyState *Window::busy() const {
  return &m_environment.busy;
}

DisplaySettings *Window::display() const {
  return m_environment.display.get();
}

TextField *Window::scanField() const {
  const bool isCovered = m_environment.alerts.count() > 0 || m_environment.busy.isActive();
  return isCovered ? nullptr : m_root.scanField();
}

void Window::refuseScan(const QString &code) {
  m_root.noteRefusedScan(code);
  m_environment.sounds->playSystemSound(SoundPlayer::kErrorTone);
}
