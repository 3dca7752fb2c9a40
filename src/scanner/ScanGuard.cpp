#include "scanner/ScanGuard.h"

#include "view/Window.h"
#include "view/outlets/TextField.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QTimerEvent>
#include <QWindow>

#include <utility>

namespace {

/// The time added to the detector's longest gap before held keys are released, in milliseconds.
constexpr int kGrace = 10;

bool isReturn(const QKeyEvent &key) {
  return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

/// Returns true if the key typed a character that a code can contain.
bool isCharacter(const QKeyEvent &key) {
  constexpr Qt::KeyboardModifiers kCommands = Qt::ControlModifier | Qt::AltModifier;
  return !key.isAutoRepeat() && !key.modifiers().testAnyFlags(kCommands) && !key.text().isEmpty() &&
         key.text().front().isPrint();
}

/// Returns true for modifier keys, which scanners send between the characters of a code.
bool isModifier(const QKeyEvent &key) {
  return key.key() == Qt::Key_Shift || key.key() == Qt::Key_CapsLock || key.key() == Qt::Key_AltGr;
}

}  // namespace

ScanGuard::ScanGuard(QWindow &window, Window &state) : m_window(window), m_state(state) {
  m_window.installEventFilter(this);
  connect(&m_state, &Window::pressing, this, &ScanGuard::press);
}

ScanGuard::~ScanGuard() = default;

bool ScanGuard::eventFilter(QObject * /*watched*/, QEvent *event) {
  if (m_isLettingGo) {
    return false;
  }
  switch (event->type()) {
    case QEvent::KeyPress:
      return filterPress(*static_cast<QKeyEvent *>(event));
    case QEvent::KeyRelease:
      return filterRelease(*static_cast<QKeyEvent *>(event));
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
      press();
      return false;
    default:
      return false;
  }
}

void ScanGuard::press() {
  // A held code does not belong to the touched item; it goes to its field when it is complete.
  if (!isHolding() || !m_burst.isPossible()) {
    letGo();
    m_burst.interrupt();
  }
}

bool ScanGuard::filterPress(const QKeyEvent &key) {
  if (isReturn(key)) {
    return filterReturn(key);
  }
  if (isModifier(key)) {
    return false;
  }
  if (!isCharacter(key)) {
    if (isHolding() && m_burst.isCertain()) {
      // A control character of the code.
      hold(key);
      return true;
    }
    letGo();
    m_burst.interrupt();
    return false;
  }
  const bool wasCertain = m_burst.isCertain();
  if (!m_burst.type(key.text(), key.timestamp())) {
    release(wasCertain);
  }
  if (m_held.empty() && focusedScanField() != nullptr) {
    return false;
  }
  hold(key);
  return true;
}

bool ScanGuard::filterRelease(const QKeyEvent &key) {
  if (m_held.empty() || isModifier(key)) {
    return false;
  }
  hold(key);
  return true;
}

bool ScanGuard::filterReturn(const QKeyEvent &key) {
  const bool wasCertain = m_burst.isCertain();
  const std::optional<Burst> burst = m_burst.pressReturn(key.timestamp());
  if (!burst) {
    return !release(wasCertain);
  }
  TextField *field = focusedScanField();
  if (m_held.empty() && field != nullptr) {
    if (burst->isAfterPause) {
      field->edit(burst->code);
    }
    return false;
  }
  drop();
  placeScan(burst->code);
  return true;
}

void ScanGuard::placeScan(const QString &code) {
  if (TextField *field = m_state.scanField()) {
    field->becomeFirstResponder();
    field->edit(code);
    field->pressReturn();
  } else {
    m_state.refuseScan(code);
  }
}

void ScanGuard::hold(const QKeyEvent &key) {
  m_held.emplace_back(key.clone());
  m_sinceLastKey.start();
  m_timer.start(holdingTime(), Qt::PreciseTimer, this);
}

int ScanGuard::holdingTime() const {
  return static_cast<int>(m_burst.longestGap()) + kGrace;
}

void ScanGuard::timerEvent(QTimerEvent * /*event*/) {
  // If the event loop was blocked, more keys could be queued; process them first.
  if (m_sinceLastKey.hasExpired(2 * std::int64_t{holdingTime()})) {
    m_sinceLastKey.start();
    m_timer.start(0, this);
    return;
  }
  release(m_burst.isCertain());
  m_burst.interrupt();
}

bool ScanGuard::release(bool isScanners) {
  if (!isScanners || !isHolding()) {
    letGo();
    return true;
  }
  QString code;
  for (const auto &key : std::as_const(m_held)) {
    if (key->type() == QEvent::KeyPress && isCharacter(*key)) {
      code += key->text();
    }
  }
  drop();
  m_state.refuseScan(code);
  return false;
}

void ScanGuard::letGo() {
  m_timer.stop();
  const auto held = std::exchange(m_held, {});
  m_isLettingGo = true;
  for (const auto &key : held) {
    QCoreApplication::sendEvent(&m_window, key.get());
  }
  m_isLettingGo = false;
}

void ScanGuard::drop() {
  m_timer.stop();
  m_held.clear();
}

TextField *ScanGuard::focusedScanField() const {
  const QObject *focused = m_window.focusObject();
  auto *field = focused == nullptr ? nullptr : focused->property("outlet").value<TextField *>();
  return field != nullptr && m_state.takesScanIn(*field) ? field : nullptr;
}
