#include "http/kept_answer.h"

#include <chrono>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <utility>

namespace cartonpick::orders {

namespace {

class KeptAnswerTest : public testing::Test {
 protected:
  std::string answer() { return m_kept.answer().body; }
  void pass(std::chrono::milliseconds time) { m_now += time; }
  void failNext() { m_fails = true; }

 private:
  Answer find() {
    if (std::exchange(m_fails, false)) {
      throw std::runtime_error("not found");
    }
    return textAnswer(200, std::to_string(++m_found));
  }

  int m_found = 0;
  bool m_fails = false;
  KeptAnswer::Clock::time_point m_now = KeptAnswer::Clock::now();
  KeptAnswer m_kept{[this] { return find(); }, [this] { return m_now; }};
};

}  // namespace

TEST_F(KeptAnswerTest, KeepsAnAnswerForASecond) {
  EXPECT_EQ(answer(), "1");
  pass(std::chrono::milliseconds(999));
  EXPECT_EQ(answer(), "1");
  pass(std::chrono::milliseconds(1));
  EXPECT_EQ(answer(), "2");
  EXPECT_EQ(answer(), "2");
}

TEST_F(KeptAnswerTest, KeepsNoFailure) {
  failNext();
  EXPECT_THROW(answer(), std::runtime_error);
  EXPECT_EQ(answer(), "1");
}

}  // namespace cartonpick::orders
