#include "pages/guess_limit.h"

#include <algorithm>

namespace cartonpick::orders {

bool GuessLimit::isReached(const std::string &client, Clock::time_point now) {
  const std::lock_guard lock(m_mutex);
  forget(now);
  return std::count_if(m_guesses.begin(), m_guesses.end(),
                       [&](const Guess &guess) { return guess.client == client; }) >= kGuesses;
}

void GuessLimit::noteWrongGuess(const std::string &client, Clock::time_point now) {
  const std::lock_guard lock(m_mutex);
  forget(now);
  m_guesses.push_back({client, now});
}

void GuessLimit::forget(Clock::time_point now) {
  while (!m_guesses.empty() &&
         (now - m_guesses.front().time >= kPeriod || m_guesses.size() >= kRemembered)) {
    m_guesses.pop_front();
  }
}

}  // namespace cartonpick::orders
