#pragma once

class ManagedObjectContext;

/// A screen that receives the shared store context and passes it on to the screens it opens.
class ManagedObjectContextHolder {
 public:
  virtual ~ManagedObjectContextHolder() = default;

  /// The context, or nullptr before it is set. It is not owned.
  [[nodiscard]] ManagedObjectContext *managedObjectContext() const {
    return m_managedObjectContext;
  }
  virtual void setManagedObjectContext(ManagedObjectContext *context) {
    m_managedObjectContext = context;
  }

 private:
  ManagedObjectContext *m_managedObjectContext = nullptr;
};
