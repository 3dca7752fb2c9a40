#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// The real order service with a store of its own, as a process that ends with this object.
class OrderService {
 public:
  /// `program` is its executable.
  explicit OrderService(QString program);
  ~OrderService();
  OrderService(const OrderService &) = delete;
  OrderService &operator=(const OrderService &) = delete;

  /// HOST:PORT.
  [[nodiscard]] const QString &host() const { return m_host; }
  /// The number of lines that were sent and are on its disk.
  [[nodiscard]] qsizetype storedLines() const;

 private:
  [[nodiscard]] QString store() const { return m_folder.filePath(QStringLiteral("orders.sqlite")); }

  QString m_program;
  QTemporaryDir m_folder;
  QProcess m_process;
  QString m_host;
};
