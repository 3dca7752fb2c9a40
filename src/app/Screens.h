#pragma once

#include <QObject>

#include <memory>

class QQmlEngine;
class QQuickWindow;
class ScanGuard;
class Window;

/// The window on screen, drawn by the QML files of the program.
class Screens {
 public:
  /// Draws `window`, which outlives this object.
  explicit Screens(Window &window);
  ~Screens();
  Screens(const Screens &) = delete;
  Screens &operator=(const Screens &) = delete;

  /// Nothing if the screens could not be loaded.
  [[nodiscard]] QQuickWindow *quickWindow() const;
  /// The guard of the window's keys.
  [[nodiscard]] const ScanGuard &scanGuard() const { return *m_guard; }

 private:
  std::unique_ptr<QQmlEngine> m_engine;
  std::unique_ptr<QObject> m_root;
  std::unique_ptr<ScanGuard> m_guard;
};
