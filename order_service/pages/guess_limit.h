#pragma once

#include <chrono>
#include <deque>
#include <mutex>
#include <string>

namespace cartonpick::orders {

/// Limits how often one address may send a wrong token. May be called from several threads at once.
class GuessLimit {
 public:
  using Clock = std::chrono::steady_clock;

  static constexpr int kGuesses = 10;  ///< from one address within the period
  static constexpr auto kPeriod = std::chrono::minutes(5);
  static constexpr std::size_t kRemembered = 10'000;  ///< wrong guesses, of all addresses

  /// Returns true if the address has no guess left.
  bool isReached(const std::string &client, Clock::time_point now = Clock::now());

  void noteWrongGuess(const std::string &client, Clock::time_point now = Clock::now());

 private:
  struct Guess {
    std::string client;
    Clock::time_point time;
  };

  void forget(Clock::time_point now);

  std::mutex m_mutex;
  std::deque<Guess> m_guesses;
};

}  // namespace cartonpick::orders
