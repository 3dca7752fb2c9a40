#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

namespace cartonpick::orders {

/// Runs a program as a child process, its standard input and output connected to pipes. A child
/// that still runs in the end is killed.
class ServiceProcess {
 public:
  /// Runs the service's executable. Throws std::system_error.
  explicit ServiceProcess(const std::vector<std::string> &arguments);

  /// Runs another program, found by its path.
  ServiceProcess(const std::string &program, const std::vector<std::string> &arguments);

  ServiceProcess(const ServiceProcess &) = delete;
  ServiceProcess &operator=(const ServiceProcess &) = delete;
  ~ServiceProcess();

  /// Waits for the first line of output and returns the port that it tells; 0 when it tells none.
  std::uint16_t readPort() const;

  /// Does nothing once the child's end was waited for.
  void signal(int number) const;
  void writeInput(const std::string &text) const;
  void closeInput();

  /// Waits until no process holds the output any more and returns what was left in it.
  std::string readOutput() const;

  bool hasEnded();

  /// Waits for the child's end. Returns its exit code, or minus the signal that ended it; -1 if it
  /// was waited for before.
  int wait();

 private:
  int m_input = -1;
  int m_output = -1;
  pid_t m_pid = -1;
};

}  // namespace cartonpick::orders
