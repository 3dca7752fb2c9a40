#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

class ManagedObjectContext;

/// A store with the program's model and durability, in a temporary folder.
class BenchStore {
 public:
  BenchStore();
  ~BenchStore();
  BenchStore(const BenchStore &) = delete;
  BenchStore &operator=(const BenchStore &) = delete;

  [[nodiscard]] ManagedObjectContext &context() const { return *m_context; }
  [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("store.sqlite")); }

 private:
  QTemporaryDir m_folder;
  std::unique_ptr<ManagedObjectContext> m_context;
};
