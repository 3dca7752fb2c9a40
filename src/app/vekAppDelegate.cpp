#include "app/vekAppDelegate.h"

#include "app/startViewController.h"
#include "store/ManagedObjectContext.h"
#include "store/ManagedObjectModel.h"
#include "store/PersistentStoreCoordinator.h"
#include "store/SaveOrAbort.h"
#include "view/Environment.h"

vekAppDelegate::vekAppDelegate(Environment &environment) : m_environment(environment) {}

vekAppDelegate::~vekAppDelegate() = default;

std::shared_ptr<const ManagedObjectModel> vekAppDelegate::managedObjectModel() {
  if (!m_managedObjectModel) {
    m_managedObjectModel =
        std::make_shared<const ManagedObjectModel>(ManagedObjectModel::bundledUrl());
  }
  return m_managedObjectModel;
}

std::shared_ptr<PersistentStoreCoordinator> vekAppDelegate::persistentStoreCoordinator() {
  if (!m_persistentStoreCoordinator) {
    const QString path =
        applicationDocumentsDirectory().toLocalFile() + QStringLiteral("/QIR_Pick.sqlite");
    m_persistentStoreCoordinator =
        std::make_shared<PersistentStoreCoordinator>(managedObjectModel());
    using Migration = PersistentStoreCoordinator::Migration;
    if (!m_persistentStoreCoordinator->addPersistentStore(path, Migration::Refuse)) {
      m_persistentStoreCoordinator->addPersistentStore(path, Migration::Automatic);
    }
  }
  return m_persistentStoreCoordinator;
}

ManagedObjectContext *vekAppDelegate::managedObjectContext() {
  if (!m_managedObjectContext) {
    m_managedObjectContext = std::make_unique<ManagedObjectContext>(persistentStoreCoordinator());
  }
  return m_managedObjectContext.get();
}

QUrl vekAppDelegate::applicationDocumentsDirectory() const {
  return QUrl::fromLocalFile(m_environment.folders.documents());
}

void vekAppDelegate::saveContext() {
  if (m_managedObjectContext) {
    saveOrAbort(*m_managedObjectContext);
  }
}

bool vekAppDelegate::didFinishLaunchingWithOptions() {
  m_startScreen.reset(m_environment.storyboard.instantiateViewController(
      QStringLiteral("startViewController"), m_environment, nullptr));
  m_window = std::make_unique<Window>(*m_startScreen, m_environment);
  if (auto *start = qobject_cast<startViewController *>(m_startScreen.get())) {
    start->setManagedObjectContext(managedObjectContext());
  }
  m_startScreen->loadViewIfNeeded();
  m_window->setStatusBarStyle(Window::StatusBarStyle::LightContent);
  return true;
}
