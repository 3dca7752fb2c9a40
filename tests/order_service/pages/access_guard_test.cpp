#include "pages/access_guard.h"

#include "model/input_error.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>
#include <vector>

namespace cartonpick::orders {

namespace {

const std::string kToken = "token-of-16-signs";

Request get(const std::string &target) {
  return {.method = "GET", .target = target, .contentType = {}, .body = {}};
}

Request login(const std::string &body) {
  return {.method = "POST", .target = "/login", .contentType = {}, .body = body};
}

std::string header(const Answer &answer, const std::string &name) {
  for (const auto &[known, value] : answer.headers) {
    if (known == name) {
      return value;
    }
  }
  return {};
}

}  // namespace

TEST(AccessGuard, AcceptsAllRequestsIfItIsOpen) {
  EXPECT_FALSE(AccessGuard(std::nullopt, true).refusal(get("/")));
}

TEST(AccessGuard, IsOpenOnlyUnderTheNamesOfThisMachine) {
  const AccessGuard guard(std::nullopt, true);
  Request request = get("/");
  for (const std::string own : {"localhost", "localhost:8080", "127.0.0.1", "127.0.0.1:8080",
                                "127.1.2.3:1", "[::1]:8080", "[::1]", ""}) {
    request.host = own;
    EXPECT_FALSE(guard.refusal(request)) << own;
  }
  for (const std::string others :
       {"evil.example", "evil.example:8080", "localhost.evil.example", "127.0.0.1.evil.example",
        "127.evil.example:8080", "10.0.0.7:8080", "[::2]:8080", "localhost:8080.evil.example",
        "evil.example:127.0.0.1", ":8080"}) {
    request.host = others;
    const auto refusal = guard.refusal(request);
    ASSERT_TRUE(refusal) << others;
    EXPECT_EQ(refusal->status, 403) << others;
  }
}

TEST(AccessGuard, IsNotOpenThroughAProxy) {
  Request request = get("/");
  request.host = "127.0.0.1:8080";
  request.isForwarded = true;
  const auto refusal = AccessGuard(std::nullopt, true).refusal(request);
  ASSERT_TRUE(refusal);
  EXPECT_EQ(refusal->status, 403);
  request.authorization = "Bearer " + kToken;
  EXPECT_FALSE(AccessGuard(kToken, true).refusal(request));
}

TEST(AccessGuard, AcceptsATokenWithAPercentSign) {
  const std::string token = "token-of-%41-signs";
  const AccessGuard guard(token, false);
  Request request = get("/");
  request.authorization = "Bearer " + token;
  EXPECT_FALSE(guard.refusal(request));
  const auto answer = guard.refusal(login("token=token-of-%2541-signs"));
  ASSERT_TRUE(answer);
  const std::string cookie = header(*answer, "Set-Cookie");
  request.authorization.clear();
  request.cookie = cookie.substr(0, cookie.find(';'));
  EXPECT_FALSE(guard.refusal(request));
}

TEST(AccessGuard, AcceptsAnyHostWithTheToken) {
  Request request = get("/");
  request.host = "orders.example";
  request.authorization = "Bearer " + kToken;
  EXPECT_FALSE(AccessGuard(kToken, true).refusal(request));
}

TEST(AccessGuard, RevealsNothingToAPageOfAnotherSiteThatPostsALogin) {
  const AccessGuard guard(kToken, false);
  Request request = login("token=token-that-is-guessed");
  request.host = "orders.example";
  request.origin = "http://evil.example";
  const auto answer = guard.refusal(request);
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 401);
  EXPECT_EQ(header(*answer, "Set-Cookie"), "");
}

TEST(AccessGuard, RefusesAllRequestsWithoutATokenIfItIsNotOpen) {
  const auto refusal = AccessGuard(std::nullopt, false).refusal(get("/"));
  ASSERT_TRUE(refusal);
  EXPECT_EQ(refusal->status, 403);
}

TEST(AccessGuard, AsksABrowserForTheToken) {
  const auto refusal = AccessGuard(kToken, true).refusal(get("/"));
  ASSERT_TRUE(refusal);
  EXPECT_EQ(refusal->status, 401);
  EXPECT_EQ(header(*refusal, "WWW-Authenticate"), "Bearer");
  EXPECT_NE(refusal->body.find("<form method=\"post\" action=\"/login\">"), std::string::npos);
  EXPECT_EQ(refusal->body.find(kToken), std::string::npos);
}

TEST(AccessGuard, AcceptsTheTokenAsABearerToken) {
  const AccessGuard guard(kToken, false);
  Request request = get("/metrics");
  for (const std::string scheme : {"Bearer ", "bearer ", "BEARER "}) {
    request.authorization = scheme + kToken;
    EXPECT_FALSE(guard.refusal(request)) << scheme;
  }
  for (const auto &wrong :
       std::vector<std::string>{"Bearer ", "Bearer token", "Bearer" + kToken, kToken,
                                "Bearer " + kToken + "x", "Basic " + kToken}) {
    request.authorization = wrong;
    EXPECT_TRUE(guard.refusal(request)) << wrong;
  }
}

TEST(AccessGuard, AcceptsTheCookieThatALoginSets) {
  const AccessGuard guard(kToken, false);
  const auto answer = guard.refusal(login("token=token%2Dof-16-signs"));
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 303);
  EXPECT_EQ(header(*answer, "Location"), "/");
  const std::string cookie = header(*answer, "Set-Cookie");
  EXPECT_TRUE(cookie.ends_with("; Path=/; Max-Age=43200; HttpOnly; SameSite=Strict")) << cookie;
  EXPECT_EQ(cookie.find(kToken), std::string::npos) << "the cookie is not the token";
  Request request = get("/");
  request.cookie = "a=b; " + cookie.substr(0, cookie.find(';')) + "; c=d";
  EXPECT_FALSE(guard.refusal(request));
  for (const std::string wrong : {"", "x", "--", "99999999999-1-", "99999999999-1-00"}) {
    request.cookie = "cartonpick_session=" + wrong;
    EXPECT_TRUE(guard.refusal(request)) << wrong;
  }
  request.cookie = "cartonpick_session=" + kToken;
  EXPECT_TRUE(guard.refusal(request));
}

TEST(AccessGuard, RedirectsToTheRequestedPage) {
  const AccessGuard guard(kToken, false);
  EXPECT_NE(guard.refusal(get("/deliveries/D%201"))->body.find("value=\"/deliveries/D%201\""),
            std::string::npos);
  const auto destination = [&](const std::string &page) {
    return header(*guard.refusal(login("token=" + kToken + "&page=" + page)), "Location");
  };
  EXPECT_EQ(destination("%2Fdeliveries%2FD%25201"), "/deliveries/D%201");
  for (const std::string elsewhere : {"", "%2F%2Fx.example", "%2F%5Cx.example", "http%3A%2F%2Fx",
                                      "%2Fa%0D%0AX-Injected%3A1", "%2F%C3%A4", "%2Flogin"}) {
    EXPECT_EQ(destination(elsewhere), "/") << elsewhere;
  }
}

TEST(AccessGuard, ReportsAWrongToken) {
  const AccessGuard guard(kToken, false);
  const std::string wrong = "That is not the token.";
  EXPECT_EQ(guard.refusal(get("/"))->body.find(wrong), std::string::npos);
  EXPECT_NE(guard.refusal(login("token=x"))->body.find(wrong), std::string::npos);
}

TEST(AccessGuard, RefusesALoginWithAnotherToken) {
  const AccessGuard guard(kToken, false);
  for (const auto &body :
       std::vector<std::string>{"", "token=", "token=x", "other=" + kToken, "token=%"}) {
    const auto answer = guard.refusal(login(body));
    ASSERT_TRUE(answer) << body;
    EXPECT_EQ(answer->status, 401) << body;
    EXPECT_EQ(header(*answer, "Set-Cookie"), "") << body;
  }
}

TEST(AccessGuard, SetsASecureCookieIfTheLoginUsedTls) {
  Request request = login("token=" + kToken);
  request.origin = "https://orders.example";
  EXPECT_TRUE(
      header(*AccessGuard(kToken, false).refusal(request), "Set-Cookie").ends_with("; Secure"));
  request.origin = "http://orders.example";
  EXPECT_FALSE(
      header(*AccessGuard(kToken, false).refusal(request), "Set-Cookie").ends_with("; Secure"));
}

TEST(AccessGuard, RemovesTheCookieAtALogOut) {
  Request request = login("");
  request.target = "/logout";
  const auto answer = AccessGuard(kToken, false).refusal(request);
  EXPECT_EQ(answer->status, 303);
  EXPECT_TRUE(header(*answer, "Set-Cookie").starts_with("cartonpick_session=; Path=/; Max-Age=0;"));
}

TEST(AccessGuard, AcceptsTheFormerTokenWhileItIsReplaced) {
  const std::string former = "former-token-of-some-signs";
  const AccessGuard guard(AccessTokens{kToken, former});
  Request request = get("/");
  for (const std::string &token : {kToken, former}) {
    request.authorization = "Bearer " + token;
    EXPECT_FALSE(guard.refusal(request)) << token;
    EXPECT_EQ(guard.refusal(login("token=" + token))->status, 303) << token;
  }
}

TEST(AccessGuard, EndsTheSessionsOfATokenThatIsWithdrawn) {
  const std::string cookie =
      header(*AccessGuard(kToken, false).refusal(login("token=" + kToken)), "Set-Cookie");
  Request request = get("/");
  request.cookie = cookie.substr(0, cookie.find(';'));
  EXPECT_FALSE(AccessGuard(AccessTokens{"another-token-of-signs", kToken}).refusal(request));
  EXPECT_TRUE(AccessGuard(AccessTokens{"another-token-of-signs"}).refusal(request));
}

TEST(AccessGuard, LimitsTheGuessesOfAnAddress) {
  const AccessGuard guard(kToken, false);
  Request guess = login("token=wrong");
  guess.client = "10.0.0.7";
  for (int i = 0; i < GuessLimit::kGuesses; ++i) {
    EXPECT_EQ(guard.refusal(guess)->status, 401) << i;
  }
  EXPECT_EQ(guard.refusal(guess)->status, 429);
  EXPECT_EQ(header(*guard.refusal(guess), "Retry-After"), "300");
  Request right = login("token=" + kToken);
  right.client = "10.0.0.7";
  EXPECT_EQ(guard.refusal(right)->status, 429);
  Request bearer = get("/");
  bearer.client = "10.0.0.7";
  bearer.authorization = "Bearer " + kToken;
  EXPECT_EQ(guard.refusal(bearer)->status, 429);
  right.client = "10.0.0.8";
  const auto session = guard.refusal(right);
  EXPECT_EQ(session->status, 303);
  Request page = get("/");
  page.client = "10.0.0.7";
  EXPECT_EQ(guard.refusal(page)->status, 401);
  page.cookie = header(*session, "Set-Cookie").substr(0, header(*session, "Set-Cookie").find(';'));
  EXPECT_FALSE(guard.refusal(page)) << "a session is no guess";
}

TEST(AccessGuard, ReadsItsTokensFromTheFirstLinesOfAFile) {
  const TemporaryFolder folder;
  const std::string former = "former-token-of-some-signs";
  EXPECT_EQ(readTokens(folder.write("token", kToken + "\n")).current, kToken);
  EXPECT_FALSE(readTokens(folder.write("token", kToken + "\n\n")).former);
  EXPECT_EQ(readTokens(folder.write("token", kToken + '\n' + former)).former, former);
  for (const auto &text :
       std::vector<std::string>{"", "too short\n", "token of 16 signs\n", "token-of-16-sign;s\n",
                                kToken + "\ntoo short\n"}) {
    EXPECT_THROW(readTokens(folder.write("token", text)), InputError) << text;
  }
  EXPECT_THROW(readTokens(folder.path("missing")), InputError);
}

}  // namespace cartonpick::orders
