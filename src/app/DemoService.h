#pragma once

#include <QProcess>
#include <QString>

/// An order service with demo deliveries, run as a child process on a free loopback port. Ends with
/// this object, and with the program if that ends in any other way.
class DemoService {
 public:
  /// `program` is the order service, by default the one that stands beside this program.
  explicit DemoService(QString program = besideThisProgram());
  ~DemoService();
  DemoService(const DemoService &) = delete;
  DemoService &operator=(const DemoService &) = delete;

  /// Starts the service and waits until it listens. HOST:PORT, or an empty text, with a line in the
  /// log, if it could not be started.
  QString start();

 private:
  static QString besideThisProgram();

  QString m_program;
  QProcess m_process;
};
