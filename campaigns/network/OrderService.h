#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// The real order service with a temporary store, in a process that ends with this object.
class OrderService {
 public:
  /// Starts the executable `program` on a free loopback port.
  explicit OrderService(QString program);
  ~OrderService();
  OrderService(const OrderService &) = delete;
  OrderService &operator=(const OrderService &) = delete;

  /// The HOST:PORT that the service listens on.
  [[nodiscard]] const QString &host() const { return m_host; }
  /// Returns the number of sent lines in the store.
  [[nodiscard]] qsizetype storedLines() const;

 private:
  [[nodiscard]] QString store() const { return m_folder.filePath(QStringLiteral("orders.sqlite")); }

  QString m_program;
  QTemporaryDir m_folder;
  QProcess m_process;
  QString m_host;
};
