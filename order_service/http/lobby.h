#pragma once

#include "http/incoming_request.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace cartonpick::orders {

/// Where connections wait until their request is whole. One thread receives them all, so that those
/// who send slowly, or nothing, keep nobody from being answered: when there are too many of them,
/// or what they sent is too much, the one that has waited longest is dropped.
class Lobby {
 public:
  struct Limits {
    /// For how long nothing may arrive.
    std::chrono::milliseconds stall;
    std::size_t connections;
    std::size_t bytes;
  };
  /// Takes over the socket and what came over it: a whole request, or what there is of one of which
  /// no more will come. Is called from the lobby's thread.
  using Leave = std::function<void(int socket, std::string request)>;

  Lobby(const Limits &limits, Leave leave);
  Lobby(const Lobby &) = delete;
  Lobby &operator=(const Lobby &) = delete;
  /// Drops the connections whose requests do not become whole within a moment.
  ~Lobby();

  /// Takes over a socket. Waits while others are at the door.
  void enter(int socket);

 private:
  using Clock = std::chrono::steady_clock;

  struct Guest {
    int socket;
    Clock::time_point lastHeard;
    IncomingRequest request = {};
    bool isOver = false;  ///< Nothing more will come.
  };

  void run(const std::stop_token &stop);
  void letIn();
  void waitForBytes() const;
  void receive(Guest &guest);
  void letOut();
  void dropSome();
  void drop(std::list<Guest>::iterator guest);

  Limits m_limits;
  Leave m_leave;
  std::list<Guest> m_guests;  ///< the one that has waited longest first
  std::size_t m_bytes = 0;
  int m_bell;  ///< readable when somebody is at the door
  std::mutex m_mutex;
  std::condition_variable m_doorIsFree;
  std::vector<int> m_atTheDoor;
  /// The last member: it uses the others.
  std::jthread m_thread;
};

}  // namespace cartonpick::orders
