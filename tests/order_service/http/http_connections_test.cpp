#include "http/http_server.h"
#include "http_client.h"
#include "raw_connection.h"

#include <gtest/gtest.h>
#include <memory>

namespace cartonpick::orders {

namespace {

/// Answers with what it knows of the request.
Answer echo(const Request &request) {
  if (request.target == "/large") {
    return textAnswer(200, std::string(32 * kMebibyte, 'x'));
  }
  return textAnswer(200, request.method + ' ' + request.target + ' ' + request.body);
}

class HttpConnectionsTest : public testing::Test {
 protected:
  void start(const HttpSettings &settings, const Handler &handler = echo) {
    m_server = std::make_unique<HttpServer>(settings, HttpHandlers{.answer = handler}, m_metrics);
  }
  std::uint16_t port() const { return m_server->port(); }
  bool hasMetric(const std::string &line) const {
    return m_metrics.text().find(line + '\n') != std::string::npos;
  }

 private:
  Metrics m_metrics;
  std::unique_ptr<HttpServer> m_server;
};

std::string getOf(const std::string &target, const std::string &fields = {}) {
  return "GET " + target + " HTTP/1.1\r\nHost: a\r\n" + fields + "\r\n";
}

const std::string kClose = "Connection: close\r\n";

}  // namespace

TEST_F(HttpConnectionsTest, AnswersRequestsThatFollowEachOtherInTheirOrder) {
  start({});
  std::string requests;
  for (int i = 0; i < 20; ++i) {
    requests += getOf(std::string("/").append(std::to_string(i)));
  }
  requests += "POST /post HTTP/1.1\r\nHost: a\r\nContent-Length: 3\r\n\r\nabc";
  const auto replies = repliesIn(exchangeRaw(port(), requests + getOf("/last", kClose)));
  ASSERT_EQ(replies.size(), 22U);
  EXPECT_EQ(replies[0].body, "GET /0 ");
  EXPECT_EQ(replies[0].header("Connection"), "");
  EXPECT_EQ(replies[19].body, "GET /19 ");
  EXPECT_EQ(replies[20].body, "POST /post abc");
  EXPECT_EQ(replies[21].body, "GET /last ");
  EXPECT_EQ(replies[21].header("Connection"), "close");
}

TEST_F(HttpConnectionsTest, KeepsAConnectionForTheNextRequest) {
  start({});
  const RawConnection connection(port());
  for (const std::string target : {"/1", "/2"}) {
    connection.sendAll(getOf(target));
    ASSERT_TRUE(connection.waitForBytes(std::chrono::minutes(1)));
    EXPECT_TRUE(connection.receiveSome().ends_with("GET " + target + " "));
  }
  EXPECT_TRUE(hasMetric("cartonpick_connections 1"));
}

TEST_F(HttpConnectionsTest, KeepsAConnectionOfHttp10OnlyIfAsked) {
  start({});
  const std::string plain = "GET / HTTP/1.0\r\nHost: a\r\n\r\n";
  const std::string kept = "GET / HTTP/1.0\r\nHost: a\r\nConnection: keep-alive\r\n\r\n";
  const auto replies = repliesIn(exchangeRaw(port(), kept + plain + plain));
  ASSERT_EQ(replies.size(), 2U);
  EXPECT_EQ(replies[0].header("Connection"), "keep-alive");
  EXPECT_EQ(replies[1].header("Connection"), "close");
}

TEST_F(HttpConnectionsTest, ClosesAnIdleConnection) {
  start({.limits = {.idle = std::chrono::milliseconds(50)}});
  EXPECT_EQ(RawConnection(port()).receiveAll(), "");
  const RawConnection used(port());
  used.sendAll(getOf("/"));
  EXPECT_EQ(repliesIn(used.receiveAll()).size(), 1U);
}

TEST_F(HttpConnectionsTest, SendsContinueToAClientThatWaitsForIt) {
  start({});
  const RawConnection connection(port());
  connection.sendAll("POST / HTTP/1.1\r\nHost: a\r\nExpect: 100-continue\r\n" + kClose +
                     "Content-Length: 3\r\n\r\n");
  ASSERT_TRUE(connection.waitForBytes(std::chrono::minutes(1)));
  EXPECT_EQ(connection.receiveSome(), "HTTP/1.1 100 Continue\r\n\r\n");
  connection.sendAll("abc");
  EXPECT_TRUE(connection.receiveAll().ends_with("POST / abc"));
}

TEST_F(HttpConnectionsTest, RefusesABodyThatIsTooLargeBeforeItIsSent) {
  start({});
  const auto answer = exchangeRaw(port(),
                                  "POST / HTTP/1.1\r\nHost: a\r\nExpect: 100-continue\r\n"
                                  "Content-Length: 99999999\r\n\r\n");
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 413 ")) << answer;
}

TEST_F(HttpConnectionsTest, ClosesAConnectionWhoseClientReadsNothing) {
  start({.limits = {.answerStall = std::chrono::milliseconds(200)}});
  const RawConnection slow(port(), 4096);
  slow.sendAll(getOf("/large"));
  // Its metrics know it from its acceptance to its end.
  while (!hasMetric("cartonpick_connections 1")) {
    std::this_thread::yield();
  }
  while (!hasMetric("cartonpick_connections 0")) {
    std::this_thread::yield();
  }
  EXPECT_LT(slow.receiveAll().size(), 32 * kMebibyte);
}

TEST_F(HttpConnectionsTest, DropsTheLongestWaitingConnectionWhenTheyHoldTooMuch) {
  start({.limits = {.waitingBytes = kMebibyte}});
  const std::string post = "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 1000000\r\n\r\n";
  const RawConnection first(port());
  first.sendAll(post + std::string(700'000, 'a'));
  const RawConnection second(port());
  second.sendAll(post + std::string(700'000, 'b'));
  EXPECT_EQ(first.receiveAll(), "");
  second.sendAll(std::string(300'000, 'b') + getOf("/next", kClose));
  EXPECT_EQ(repliesIn(second.receiveAll()).size(), 2U);
  EXPECT_TRUE(hasMetric("cartonpick_refusals_total{reason=\"dropped\"} 1"));
}

TEST_F(HttpConnectionsTest, DropsTheLongestWaitingConnectionOfAnAddressThatHasTooMany) {
  start({.limits = {.waitingOfOneAddress = 2}});
  const RawConnection first(port());
  const RawConnection second(port());
  const RawConnection third(port());
  EXPECT_EQ(first.receiveAll(), "");
  third.sendAll(getOf("/", kClose));
  EXPECT_EQ(repliesIn(third.receiveAll()).size(), 1U);
}

TEST_F(HttpConnectionsTest, LetsATrustedProxyHaveAnyNumberOfConnections) {
  start({.trustedProxies = TrustedProxies({"127.0.0.1"}), .limits = {.waitingOfOneAddress = 1}});
  const RawConnection first(port());
  const RawConnection second(port());
  EXPECT_EQ(HttpClient(port()).get("/").status, 200);
  first.sendAll(getOf("/", kClose));
  EXPECT_EQ(repliesIn(first.receiveAll()).size(), 1U);
}

TEST_F(HttpConnectionsTest, AcceptsNoMoreConnectionsThanAllowed) {
  start({.limits = {.connections = 2}});
  const RawConnection first(port());
  const RawConnection second(port());
  EXPECT_EQ(HttpClient(port()).get("/").status, 200);
  EXPECT_EQ(first.receiveAll(), "");
}

TEST_F(HttpConnectionsTest, KnowsTheClientOnlyBehindATrustedProxy) {
  const auto client = [](const Request &request) {
    return textAnswer(200, request.client + (request.isForwarded ? " forwarded" : ""));
  };
  start({}, client);
  const Headers headers = {{"X-Forwarded-For", "10.0.0.9"}};
  EXPECT_EQ(HttpClient(port()).get("/").body, "127.0.0.1");
  EXPECT_EQ(HttpClient(port()).get("/", headers).body, "127.0.0.1 forwarded");
  start({.trustedProxies = TrustedProxies({"127.0.0.0/8"})}, client);
  EXPECT_EQ(HttpClient(port()).get("/", headers).body, "10.0.0.9 forwarded");
}

TEST_F(HttpConnectionsTest, RecognisesAProxyByItsFields) {
  start({}, [](const Request &request) {
    return textAnswer(200, request.isForwarded ? "forwarded" : "direct");
  });
  EXPECT_EQ(HttpClient(port()).get("/").body, "direct");
  for (const std::string field : {"Forwarded", "Via", "X-Forwarded-For", "X-Forwarded-Host",
                                  "X-Forwarded-Proto", "X-Real-IP"}) {
    EXPECT_EQ(HttpClient(port()).get("/", {{field, "a"}}).body, "forwarded") << field;
  }
  EXPECT_TRUE(exchangeRaw(port(), "GET / HTTP/1.0\r\nHost: a\r\n\r\n").ends_with("forwarded"));
}

TEST_F(HttpConnectionsTest, GivesEachRequestAnId) {
  const auto id = [](const Request &request) { return textAnswer(200, request.id); };
  start({}, id);
  const Headers headers = {{"X-Request-Id", "from-outside"}};
  const Reply first = HttpClient(port()).get("/", headers);
  EXPECT_EQ(first.header("X-Request-Id"), first.body);
  EXPECT_NE(first.body, "from-outside");
  EXPECT_NE(HttpClient(port()).get("/").body, first.body);
  start({.trustedProxies = TrustedProxies({"127.0.0.1"})}, id);
  EXPECT_EQ(HttpClient(port()).get("/", headers).body, "from-outside");
}

TEST_F(HttpConnectionsTest, SendsTheDate) {
  start({});
  const std::string date = HttpClient(port()).get("/").header("Date");
  EXPECT_EQ(date.size(), 29U) << date;
  EXPECT_TRUE(date.ends_with(" GMT")) << date;
}

}  // namespace cartonpick::orders
