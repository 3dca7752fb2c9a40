#pragma once

#include <QObject>

#include <memory>

class QQmlEngine;
class QQuickWindow;
class ScanGuard;
class TouchGuard;
class Window;

/// The QML engine and the window on screen.
class Screens {
 public:
  /// Loads Main.qml, which draws `window`; errors are logged. `window` must outlive this object.
  explicit Screens(Window &window);
  ~Screens();
  Screens(const Screens &) = delete;
  Screens &operator=(const Screens &) = delete;

  /// The window, or nullptr if Main.qml cannot be loaded. It is owned by this object.
  [[nodiscard]] QQuickWindow *quickWindow() const;
  /// The filter for the window's key events; call it only if there is a window.
  [[nodiscard]] const ScanGuard &scanGuard() const { return *m_scanGuard; }
  /// The filter for the window's touches; call it only if there is a window.
  [[nodiscard]] const TouchGuard &touchGuard() const { return *m_touchGuard; }

 private:
  std::unique_ptr<QQmlEngine> m_engine;
  std::unique_ptr<QObject> m_root;
  std::unique_ptr<ScanGuard> m_scanGuard;
  std::unique_ptr<TouchGuard> m_touchGuard;
};
