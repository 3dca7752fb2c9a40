#include "http/lobby.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace cartonpick::orders {

namespace {

constexpr std::size_t kMaxAtTheDoor = 64;

/// How often the lobby looks for guests from whom nothing has come, while it has any.
constexpr std::chrono::milliseconds kRound(50);
constexpr int kForever = -1;

/// What the end grants to those whose requests are arriving.
constexpr std::chrono::milliseconds kFarewell(500);

}  // namespace

Lobby::Lobby(const Limits &limits, Leave leave)
    : m_limits(limits),
      m_leave(std::move(leave)),
      m_bell(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (m_bell < 0) {
    throw std::system_error(errno, std::generic_category(), "eventfd");
  }
  m_thread = std::jthread([this](const std::stop_token &stop) { run(stop); });
}

Lobby::~Lobby() {
  m_thread.request_stop();
  ::eventfd_write(m_bell, 1);
  m_thread.join();
  for (const Guest &guest : m_guests) {
    ::close(guest.socket);
  }
  ::close(m_bell);
}

void Lobby::enter(int socket) {
  std::unique_lock lock(m_mutex);
  m_doorIsFree.wait(lock, [this] { return m_atTheDoor.size() < kMaxAtTheDoor; });
  m_atTheDoor.push_back(socket);
  ::eventfd_write(m_bell, 1);
}

void Lobby::run(const std::stop_token &stop) {
  Clock::time_point end = Clock::time_point::max();
  do {
    waitForBytes();
    letIn();
    std::for_each(m_guests.begin(), m_guests.end(), [this](Guest &guest) { receive(guest); });
    letOut();
    dropSome();
    if (stop.stop_requested() && end == Clock::time_point::max()) {
      end = Clock::now() + kFarewell;
    }
  } while (!stop.stop_requested() || (!m_guests.empty() && Clock::now() < end));
}

void Lobby::waitForBytes() const {
  std::vector<pollfd> sockets = {{m_bell, POLLIN, 0}};
  sockets.reserve(m_guests.size() + 1);
  for (const Guest &guest : m_guests) {
    sockets.push_back({guest.socket, POLLIN, 0});
  }
  ::poll(sockets.data(), sockets.size(),
         m_guests.empty() ? kForever : static_cast<int>(kRound.count()));
}

void Lobby::letIn() {
  const std::lock_guard lock(m_mutex);
  eventfd_t rings = 0;
  ::eventfd_read(m_bell, &rings);
  for (const int socket : std::exchange(m_atTheDoor, {})) {
    m_guests.push_back({.socket = socket, .lastHeard = Clock::now()});
  }
  m_doorIsFree.notify_all();
}

void Lobby::receive(Guest &guest) {
  thread_local std::array<char, std::size_t{64} * 1024> buffer;
  while (!guest.isOver && !guest.request.isWhole()) {
    const ssize_t size = ::recv(guest.socket, buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (size < 0 && errno == EINTR) {
      continue;
    }
    if (size < 0 && errno == EAGAIN) {
      guest.isOver = Clock::now() - guest.lastHeard > m_limits.stall;
      return;
    }
    if (size <= 0) {
      guest.isOver = true;
      return;
    }
    guest.lastHeard = Clock::now();
    const std::size_t before = guest.request.bytes().size();
    guest.request.append({buffer.data(), static_cast<std::size_t>(size)});
    m_bytes += guest.request.bytes().size() - before;
    if (m_bytes > m_limits.bytes) {
      return;
    }
  }
}

void Lobby::letOut() {
  for (auto guest = m_guests.begin(); guest != m_guests.end();) {
    const auto next = std::next(guest);
    if (guest->isOver && guest->request.bytes().empty()) {
      drop(guest);
    } else if (guest->isOver || guest->request.isWhole()) {
      m_bytes -= guest->request.bytes().size();
      m_leave(guest->socket, guest->request.take());
      m_guests.erase(guest);
    }
    guest = next;
  }
}

void Lobby::dropSome() {
  while (!m_guests.empty() &&
         (m_guests.size() > m_limits.connections || m_bytes > m_limits.bytes)) {
    drop(m_guests.begin());
  }
}

void Lobby::drop(std::list<Guest>::iterator guest) {
  m_bytes -= guest->request.bytes().size();
  ::close(guest->socket);
  m_guests.erase(guest);
}

}  // namespace cartonpick::orders
