#pragma once

class ManagedObjectContext;

/// A screen that is handed the one store context, and hands it on.
class ManagedObjectContextHolder {
 public:
  virtual ~ManagedObjectContextHolder() = default;

  /// Nothing until one has been handed on.
  [[nodiscard]] ManagedObjectContext *managedObjectContext() const {
    return m_managedObjectContext;
  }
  virtual void setManagedObjectContext(ManagedObjectContext *context) {
    m_managedObjectContext = context;
  }

 private:
  ManagedObjectContext *m_managedObjectContext = nullptr;
};
