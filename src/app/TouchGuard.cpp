#include "app/TouchGuard.h"

#include "base/Clock.h"
#include "view/Window.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStyleHints>

#include <algorithm>

namespace {

bool contains(const QQuickItem &part, QPointF place) {
  return part.contains(part.mapFromScene(place));
}

/// Returns true if `event` is a movement of the mouse without a pressed button.
bool isHover(const QEvent &event) {
  return event.type() == QEvent::MouseMove &&
         static_cast<const QMouseEvent &>(event).buttons() == Qt::NoButton;
}

}  // namespace

TouchGuard::TouchGuard(QQuickWindow &window, Window &state)
    : m_window(window), m_state(state), m_clock(state.clock()) {
  m_window.installEventFilter(this);
  connect(&state, &Window::changed, this, &TouchGuard::note);
  connect(&m_window, &QQuickWindow::frameSwapped, this, &TouchGuard::noteFrame);
  note(nullptr);
}

bool TouchGuard::isWaitingForFrame() const {
  return std::any_of(m_changes.begin(), m_changes.end(),
                     [](const Change &change) { return !change.drawn && change.part != nullptr; });
}

bool TouchGuard::eventFilter(QObject * /*watched*/, QEvent *event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
      m_isRefused = false;
      m_tap = static_cast<QPointerEvent *>(event)->points().front().scenePosition();
      [[fallthrough]];
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
      return !isHover(*event) && filter(*static_cast<QPointerEvent *>(event));
    default:
      return false;
  }
}

void TouchGuard::note(QObject *part) {
  auto *item = qobject_cast<QQuickItem *>(part);
  if (item == nullptr) {
    item = m_window.contentItem();
  }
  std::erase_if(m_changes, [&](const Change &change) {
    return change.part == nullptr || change.part == item;
  });
  m_changes.push_back({item, std::nullopt});
  // Without this, a change that is not visible would wait for a frame.
  m_window.update();
  m_isRefused = m_isRefused || std::any_of(m_places.begin(), m_places.end(),
                                           [&](QPointF place) { return contains(*item, place); });
}

void TouchGuard::noteFrame() {
  for (Change &change : m_changes) {
    if (!change.drawn) {
      change.drawn = m_clock.monotonic();
    }
  }
}

bool TouchGuard::isQuiet(QPointF place) const {
  const auto now = m_clock.monotonic();
  return std::any_of(m_changes.begin(), m_changes.end(), [&](const Change &change) {
    const bool isNew = !change.drawn || now - *change.drawn < kQuietTime;
    return isNew && change.part != nullptr && contains(*change.part, place);
  });
}

bool TouchGuard::filter(QPointerEvent &event) {
  m_places.clear();
  for (const QEventPoint &point : event.points()) {
    if (point.state() != QEventPoint::Released) {
      m_places.push_back(point.scenePosition());
    }
    if (point.state() == QEventPoint::Pressed && isQuiet(point.scenePosition())) {
      m_isRefused = true;
    }
  }
  if (m_isRefused) {
    cancel(event);
    event.accept();
  } else {
    announceTap(event);
  }
  return m_isRefused;
}

void TouchGuard::announceTap(const QPointerEvent &event) {
  const QPointF place = event.points().front().scenePosition();
  const int distance = QGuiApplication::styleHints()->startDragDistance();
  if (m_tap && (*m_tap - place).manhattanLength() > distance) {
    m_tap.reset();
  }
  if (m_tap && m_places.empty()) {
    // Later: the touched control handles the touch first.
    QMetaObject::invokeMethod(
        &m_state, [this, place] { m_state.tap(place); }, Qt::QueuedConnection);
    m_tap.reset();
  }
}

void TouchGuard::cancel(const QPointerEvent &event) {
  if (QQuickItem *grabber = m_window.mouseGrabberItem()) {
    grabber->ungrabMouse();
  }
  if (event.pointingDevice()->type() != QInputDevice::DeviceType::Mouse) {
    QTouchEvent cancelled(QEvent::TouchCancel, event.pointingDevice());
    QCoreApplication::sendEvent(&m_window, &cancelled);
  }
}
