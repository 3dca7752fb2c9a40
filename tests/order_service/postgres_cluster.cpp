#include "postgres_cluster.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <pwd.h>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace cartonpick::orders {

namespace {

using Words = std::vector<std::string>;

/// PostgreSQL refuses to run as root.
constexpr auto kUser = "postgres";

/// Runs one of PostgreSQL's programs, not as root.
std::unique_ptr<ServiceProcess> start(const std::string &program, Words arguments) {
  arguments.insert(arguments.begin(), std::string(POSTGRESQL_BIN) + '/' + program);
  if (::geteuid() == 0) {
    const Words asUser = {"--reuid", kUser, "--regid", kUser, "--clear-groups", "--"};
    arguments.insert(arguments.begin(), asUser.begin(), asUser.end());
    return std::make_unique<ServiceProcess>("/usr/bin/setpriv", arguments);
  }
  const std::string path = arguments.front();
  arguments.erase(arguments.begin());
  return std::make_unique<ServiceProcess>(path, arguments);
}

bool run(const std::string &program, const Words &arguments) {
  const auto process = start(program, arguments);
  process->readOutput();
  return process->wait() == 0;
}

std::filesystem::path makeFolder() {
  std::string name = std::filesystem::temp_directory_path() / "cartonpick-postgres-XXXXXX";
  if (::mkdtemp(name.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), "mkdtemp");
  }
  if (::geteuid() == 0) {
    const passwd *user = ::getpwnam(kUser);
    if (user == nullptr || ::chown(name.c_str(), user->pw_uid, user->pw_gid) != 0) {
      throw std::runtime_error("there is no user postgres");
    }
  }
  return name;
}

}  // namespace

PostgresCluster::PostgresCluster() : m_folder(makeFolder()) {
  if (!run("initdb", {"--pgdata", m_folder / "data", "--auth", "trust", "--username", kUser,
                      "--encoding", "UTF8", "--locale", "C.UTF-8", "--no-sync"})) {
    throw std::runtime_error("initdb failed");
  }
  start();
}

PostgresCluster::PostgresCluster(StandbyOf standby) : m_folder(makeFolder()) {
  if (!run("pg_basebackup",
           {"--pgdata", m_folder / "data", "--host", standby.primary.host(), "--username", kUser,
            "--write-recovery-conf", "--checkpoint=fast", "--no-sync"})) {
    throw std::runtime_error("pg_basebackup failed");
  }
  start();
}

PostgresCluster::~PostgresCluster() {
  crash();
  std::filesystem::remove_all(m_folder);
}

std::string PostgresCluster::url() const {
  return std::string("postgresql://") + kUser + "@/postgres?host=" + host();
}

void PostgresCluster::execute(const std::string &sql) const {
  if (!run("psql", {"--quiet", "--no-psqlrc", "--host", host(), "--username", kUser, "--set",
                    "ON_ERROR_STOP=1", "--command", sql})) {
    throw std::runtime_error("psql failed");
  }
}

void PostgresCluster::start() {
  m_server = orders::start(
      "postgres", {"-D", m_folder / "data", "-c", "listen_addresses=", "-c", "fsync=off", "-c",
                   "unix_socket_directories=" + m_folder.string(), "-c", "log_min_messages=panic"});
  while (!run("pg_isready", {"--quiet", "--host", m_folder})) {
    if (m_server->hasEnded()) {
      throw std::runtime_error("PostgreSQL does not start");
    }
    std::this_thread::yield();
  }
}

void PostgresCluster::crash() {
  m_server->signal(SIGQUIT);
  m_server->wait();
}

}  // namespace cartonpick::orders
