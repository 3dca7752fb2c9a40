#include "BenchStore.h"

#include "store/ManagedObjectContext.h"
#include "store/ManagedObjectModel.h"
#include "store/PersistentStoreCoordinator.h"

#include <stdexcept>

BenchStore::BenchStore() {
  auto coordinator = std::make_shared<PersistentStoreCoordinator>(
      std::make_shared<const ManagedObjectModel>(ManagedObjectModel::bundledUrl()));
  if (!coordinator->addPersistentStore(path(), PersistentStoreCoordinator::Migration::Refuse)) {
    throw std::runtime_error("the store cannot be made");
  }
  m_context = std::make_unique<ManagedObjectContext>(std::move(coordinator));
}

BenchStore::~BenchStore() = default;
