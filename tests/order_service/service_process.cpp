#include "service_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace cartonpick::orders {

namespace {

std::array<int, 2> makePipe() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe2");
  }
  return ends;
}

std::vector<char *> pointersTo(std::vector<std::string> &words) {
  std::vector<char *> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string &word : words) {
    pointers.push_back(word.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

pid_t spawn(std::vector<std::string> words, int input, int output) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  pid_t pid = -1;
  const int error = ::posix_spawn(&pid, words.front().c_str(), &actions, nullptr,
                                  pointersTo(words).data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) {
    throw std::system_error(error, std::generic_category(), words.front());
  }
  return pid;
}

std::vector<std::string> joined(const std::string &first, const std::vector<std::string> &rest) {
  std::vector<std::string> words = {first};
  words.insert(words.end(), rest.begin(), rest.end());
  return words;
}

}  // namespace

ServiceProcess::ServiceProcess(const std::vector<std::string> &arguments)
    : ServiceProcess(CARTONPICK_ORDERS, arguments) {}

ServiceProcess::ServiceProcess(const std::string &program,
                               const std::vector<std::string> &arguments) {
  const auto [childInput, input] = makePipe();
  const auto [output, childOutput] = makePipe();
  m_input = input;
  m_output = output;
  m_pid = spawn(joined(program, arguments), childInput, childOutput);
  ::close(childInput);
  ::close(childOutput);
}

ServiceProcess::~ServiceProcess() {
  if (m_pid > 0) {
    ::kill(m_pid, SIGKILL);
    wait();
  }
  closeInput();
  ::close(m_output);
}

std::uint16_t ServiceProcess::readPort() const {
  std::string line;
  char c = 0;
  while (::read(m_output, &c, 1) == 1 && c != '\n') {
    line += c;
  }
  return static_cast<std::uint16_t>(std::strtoul(line.c_str(), nullptr, 10));
}

void ServiceProcess::signal(int number) const {
  // A process that has ended is -1 here, which would mean every process.
  if (m_pid > 0) {
    ::kill(m_pid, number);
  }
}

void ServiceProcess::writeInput(const std::string &text) const {
  if (::write(m_input, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
    throw std::system_error(errno, std::generic_category(), "write");
  }
}

void ServiceProcess::closeInput() {
  if (m_input >= 0) {
    ::close(std::exchange(m_input, -1));
  }
}

std::string ServiceProcess::readOutput() const {
  std::string output;
  char c = 0;
  while (::read(m_output, &c, 1) == 1) {
    output += c;
  }
  return output;
}

bool ServiceProcess::hasEnded() {
  siginfo_t info{};
  ::waitid(P_PID, static_cast<id_t>(m_pid), &info, WEXITED | WNOHANG | WNOWAIT);
  return info.si_pid == m_pid;
}

int ServiceProcess::wait() {
  if (m_pid <= 0) {
    return -1;
  }
  int status = 0;
  ::waitpid(std::exchange(m_pid, -1), &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace cartonpick::orders
