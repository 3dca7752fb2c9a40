#pragma once

#include <QProcess>
#include <QString>

/// An order service with demo deliveries: a child process on a free loopback port. It ends when
/// this object is destroyed, and also if the program crashes or is killed.
class DemoService {
 public:
  /// @param program  the path of the order service; by default `cartonpick-orders` beside this
  ///                 program
  explicit DemoService(QString program = besideThisProgram());
  ~DemoService();
  DemoService(const DemoService &) = delete;
  DemoService &operator=(const DemoService &) = delete;

  /// Starts the service and waits until it listens. Returns its HOST:PORT; if it cannot be started,
  /// logs the reason and returns an empty string.
  QString start();

 private:
  static QString besideThisProgram();

  QString m_program;
  QProcess m_process;
};
