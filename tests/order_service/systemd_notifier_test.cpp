#include "systemd_notifier.h"

#include "service_process.h"
#include "temporary_folder.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace cartonpick::orders {

namespace {

/// The socket that systemd would have.
class NotifySocket {
 public:
  NotifySocket() : m_descriptor(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = m_folder.path("notify");
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(::bind(m_descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address),
              0);
    ::setenv("NOTIFY_SOCKET", path.c_str(), 1);
  }
  NotifySocket(const NotifySocket &) = delete;
  NotifySocket &operator=(const NotifySocket &) = delete;
  ~NotifySocket() {
    ::unsetenv("NOTIFY_SOCKET");
    ::unsetenv("WATCHDOG_USEC");
    ::close(m_descriptor);
  }

  /// Waits for the next message.
  std::string receive() const { return receive(0); }
  /// The next message that is there; empty without one.
  std::string receiveNow() const { return receive(MSG_DONTWAIT); }

 private:
  std::string receive(int flags) const {
    std::array<char, 256> buffer{};
    const ssize_t size = ::recv(m_descriptor, buffer.data(), buffer.size(), flags);
    return {buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
  }

  TemporaryFolder m_folder;
  int m_descriptor;
};

}  // namespace

TEST(SystemdNotifier, SendsThatTheServiceIsReadyAndThatItStops) {
  const NotifySocket socket;
  const SystemdNotifier notifier;
  notifier.ready();
  EXPECT_EQ(socket.receive(), "READY=1");
  notifier.stopping();
  EXPECT_EQ(socket.receive(), "STOPPING=1");
}

TEST(SystemdNotifier, SendsNoMoreSignsOfLifeThanTheWatchdogNeeds) {
  const NotifySocket socket;
  ::setenv("WATCHDOG_USEC", "3600000000", 1);
  SystemdNotifier notifier;
  notifier.keepAlive();
  notifier.keepAlive();
  EXPECT_EQ(socket.receive(), "WATCHDOG=1");
  EXPECT_EQ(socket.receiveNow(), "");
}

TEST(SystemdNotifier, SendsNoSignsOfLifeWithoutAWatchdog) {
  const NotifySocket socket;
  SystemdNotifier notifier;
  notifier.keepAlive();
  EXPECT_EQ(socket.receiveNow(), "");
}

TEST(SystemdNotifier, DoesNothingWithoutSystemd) {
  ::setenv("NOTIFY_SOCKET", "/nowhere/notify", 1);
  SystemdNotifier notifier;
  notifier.ready();
  ::unsetenv("NOTIFY_SOCKET");
  SystemdNotifier other;
  other.ready();
  other.keepAlive();
}

TEST(SystemdNotifier, ReceivesTheStateOfTheExecutable) {
  const NotifySocket socket;
  ::setenv("WATCHDOG_USEC", "300000", 1);
  ServiceProcess service({"--port", "0"});
  ASSERT_NE(service.readPort(), 0);
  std::string message = socket.receive();
  // The connections are served before the port is told.
  while (message == "WATCHDOG=1") {
    message = socket.receive();
  }
  EXPECT_EQ(message, "READY=1");
  EXPECT_EQ(socket.receive(), "WATCHDOG=1");
  EXPECT_EQ(socket.receive(), "WATCHDOG=1");
  service.signal(SIGTERM);
  while (message != "STOPPING=1") {
    message = socket.receive();
    ASSERT_NE(message, "");
  }
  EXPECT_EQ(service.wait(), 0);
}

}  // namespace cartonpick::orders
