#include "pages/guess_limit.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

const GuessLimit::Clock::time_point kNow{};

void guess(GuessLimit &limit, const std::string &client, int count,
           GuessLimit::Clock::time_point now = kNow) {
  for (int i = 0; i < count; ++i) {
    limit.noteWrongGuess(client, now);
  }
}

}  // namespace

TEST(GuessLimit, IsReachedByTheGuessesOfOneAddress) {
  GuessLimit limit;
  guess(limit, "10.0.0.7", GuessLimit::kGuesses - 1);
  EXPECT_FALSE(limit.isReached("10.0.0.7", kNow));
  guess(limit, "10.0.0.7", 1);
  EXPECT_TRUE(limit.isReached("10.0.0.7", kNow));
  EXPECT_FALSE(limit.isReached("10.0.0.8", kNow));
}

TEST(GuessLimit, ForgetsGuessesAfterAWhile) {
  GuessLimit limit;
  guess(limit, "10.0.0.7", GuessLimit::kGuesses);
  EXPECT_TRUE(limit.isReached("10.0.0.7", kNow + GuessLimit::kPeriod - std::chrono::seconds(1)));
  EXPECT_FALSE(limit.isReached("10.0.0.7", kNow + GuessLimit::kPeriod));
}

TEST(GuessLimit, RemembersNoMoreThanItMay) {
  GuessLimit limit;
  guess(limit, "10.0.0.7", GuessLimit::kGuesses);
  guess(limit, "10.0.0.8", GuessLimit::kRemembered);
  EXPECT_FALSE(limit.isReached("10.0.0.7", kNow));
  EXPECT_TRUE(limit.isReached("10.0.0.8", kNow));
}

}  // namespace cartonpick::orders
