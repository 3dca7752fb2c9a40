#include "view/Window.h"

#include "view/Environment.h"
#include "view/outlets/TextField.h"

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

bool Window::isCovered() const {
  return m_environment.alerts.count() > 0 || m_environment.busy.isActive();
}

const Clock &Window::clock() const {
  return *m_environment.clock;
}

TextField *Window::scanField() const {
  return isCovered() ? nullptr : m_root.scanField();
}

bool Window::takesScanIn(const TextField &field) const {
  return field.takesScans() && !isCovered() && m_root.takesScanIn(field);
}

void Window::refuseScan(const QString &code) {
  m_root.noteRefusedScan(code);
  m_environment.sounds->playSystemSound(SoundPlayer::kErrorTone);
}
