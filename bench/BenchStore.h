#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

class ManagedObjectContext;

/// A store of the program's own model in a temporary folder, as durable as the program's.
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
