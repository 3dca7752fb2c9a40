#pragma once

#include "view/Window.h"

#include <QObject>
#include <QUrl>

#include <memory>

class ManagedObjectContext;
class ManagedObjectModel;
class PersistentStoreCoordinator;
struct Environment;

/// Owns the store stack and the window for the lifetime of the process.
class vekAppDelegate : public QObject {
  Q_OBJECT

 public:
  explicit vekAppDelegate(Environment &environment);
  ~vekAppDelegate() override;
  vekAppDelegate(const vekAppDelegate &) = delete;
  vekAppDelegate &operator=(const vekAppDelegate &) = delete;

  /// The window; nullptr before `didFinishLaunchingWithOptions`.
  [[nodiscard]] Window *window() const { return m_window.get(); }

  // The store stack. Each object is created on first use.
  std::shared_ptr<const ManagedObjectModel> managedObjectModel();
  /// Opens the store, migrating it automatically if needed. The result has no store if that fails.
  std::shared_ptr<PersistentStoreCoordinator> persistentStoreCoordinator();
  /// The context that all screens share.
  ManagedObjectContext *managedObjectContext();
  [[nodiscard]] QUrl applicationDocumentsDirectory() const;
  /// Saves the context if it has changes. A failed save aborts the process.
  void saveContext();

  /// Creates the store stack and the window with the start screen. Always returns true.
  bool didFinishLaunchingWithOptions();
  /// Accepts and ignores a URL.
  bool openURL(const QUrl & /*url*/) { return true; }
  bool handleOpenURL(const QUrl & /*url*/) { return true; }

  // Every change is saved immediately, so these have nothing to do.
  void willResignActive() {}
  void didEnterBackground() {}
  void willEnterForeground() {}
  void didBecomeActive() {}
  void willTerminate() {}

 private:
  Environment &m_environment;
  std::shared_ptr<const ManagedObjectModel> m_managedObjectModel;
  std::shared_ptr<PersistentStoreCoordinator> m_persistentStoreCoordinator;
  std::unique_ptr<ManagedObjectContext> m_managedObjectContext;
  std::unique_ptr<ViewController> m_startScreen;
  std::unique_ptr<Window> m_window;
};
