#include "pages/login_session.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

const std::string kToken = "token-of-16-signs";
const LoginSession::Clock::time_point kNow{std::chrono::hours(500'000)};

}  // namespace

TEST(LoginSession, IsValidUntilItExpires) {
  const std::string session = LoginSession::begin(kToken, kNow);
  EXPECT_TRUE(LoginSession::isValid(session, kToken, kNow));
  EXPECT_TRUE(LoginSession::isValid(session, kToken,
                                    kNow + LoginSession::kDuration - std::chrono::seconds(1)));
  EXPECT_FALSE(LoginSession::isValid(session, kToken, kNow + LoginSession::kDuration));
}

TEST(LoginSession, IsThatOfItsTokenAlone) {
  const std::string session = LoginSession::begin(kToken, kNow);
  EXPECT_FALSE(LoginSession::isValid(session, "another-token-16s", kNow));
  EXPECT_EQ(session.find(kToken), std::string::npos);
  EXPECT_NE(LoginSession::begin(kToken, kNow), session);
}

TEST(LoginSession, IsInvalidWithAnythingChanged) {
  const std::string session = LoginSession::begin(kToken, kNow);
  for (std::size_t i = 0; i < session.size(); ++i) {
    std::string other = session;
    other[i] = other[i] == '1' ? '2' : '1';
    EXPECT_FALSE(LoginSession::isValid(other, kToken, kNow)) << other;
    EXPECT_FALSE(LoginSession::isValid(session.substr(0, i), kToken, kNow)) << i;
  }
  EXPECT_FALSE(LoginSession::isValid(session + '0', kToken, kNow));
}

}  // namespace cartonpick::orders
