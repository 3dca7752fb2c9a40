#pragma once

#include "view/Window.h"

#include <QObject>
#include <QUrl>

#include <memory>

class ManagedObjectContext;
class ManagedObjectModel;
class PersistentStoreCoordinator;
struct Environment;

/// Owns the store stack and the window for the life of the process.
class vekAppDelegate : public QObject {
  Q_OBJECT

 public:
  explicit vekAppDelegate(Environment &environment);
  ~vekAppDelegate() override;
  vekAppDelegate(const vekAppDelegate &) = delete;
  vekAppDelegate &operator=(const vekAppDelegate &) = delete;

  /// The window; it exists from the launch on.
  [[nodiscard]] Window *window() const { return m_window.get(); }

  // The store stack; each piece is built when it is first asked for.
  std::shared_ptr<const ManagedObjectModel> managedObjectModel();
  /// Has no store if the file could be opened neither as it is nor with automatic migration.
  std::shared_ptr<PersistentStoreCoordinator> persistentStoreCoordinator();
  /// The one context that all screens share.
  ManagedObjectContext *managedObjectContext();
  [[nodiscard]] QUrl applicationDocumentsDirectory() const;
  /// Saves the context if it has changes; a failure ends the process.
  void saveContext();

  /// Builds the store stack and the window with the start screen. Always true.
  bool didFinishLaunchingWithOptions();
  /// Addresses handed to the program are accepted, and nothing is done with them.
  bool openURL(const QUrl & /*url*/) { return true; }
  bool handleOpenURL(const QUrl & /*url*/) { return true; }

  // Everything is saved when it changes, so there is nothing to do here.
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
