#include "http/http_server.h"

#include "http_client.h"
#include "raw_connection.h"
#include "sample_data.h"
#include "store/sql_store.h"
#include "stored_reports.h"
#include "tablet_api/order_service.h"
#include "temporary_folder.h"

#include <array>
#include <future>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/socket.h>

namespace cartonpick::orders {

namespace {

const std::string kPrefix = "/qir_pick/servicepick.svc/json/";

/// A store whose disk is full.
class FullStore : public OrderStore {
 public:
  Delivery delivery(const std::string &number) const override {
    const auto lines = m_deliveries.lines(number);
    return {.lines = {lines.begin(), lines.end()}};
  }
  std::vector<Article> catalogue() const override { return m_deliveries.catalogue(); }
  void store(const std::vector<PickReport> & /*lines*/) override {
    throw std::runtime_error("the disk is full");
  }

 private:
  Deliveries m_deliveries = sampleDeliveries();
};

HttpHandlers handlersOf(const OrderService &service) {
  return {.answer = [&service](const Request &request) { return service.answer(request); }};
}

class HttpServerTest : public testing::Test {
 protected:
  HttpServerTest() { m_store.load(sampleDeliveries()); }

  HttpClient client() const { return HttpClient(m_server.port()); }

  const HttpServer &server() const { return m_server; }
  int storedLinesOfServer() const { return storedReports(m_folder.path("sent.sqlite")); }
  bool hasFailed() { return m_failure.get_future().wait_for(kPatience) == kReady; }

 private:
  static constexpr auto kReady = std::future_status::ready;
  static constexpr auto kPatience = std::chrono::minutes(1);

  HttpHandlers handlers() {
    HttpHandlers handlers = handlersOf(m_service);
    handlers.failed = [this] { m_failure.set_value(); };
    return handlers;
  }

  TemporaryFolder m_folder;
  SqlStore m_store{SqlAddress(m_folder.path("sent.sqlite"))};
  OrderService m_service{m_store};
  std::promise<void> m_failure;
  Metrics m_metrics;
  HttpServer m_server{{}, handlers(), m_metrics};
};

/// A POST of the body, as bytes, with the given header lines.
std::string postOf(const std::string &headers, const std::string &body) {
  return "POST " + kPrefix + "sendpick HTTP/1.1\r\nHost: test\r\nConnection: close\r\n" + headers +
         "\r\n" + body;
}

/// The listening socket of this process at the port; -1 when there is none.
int listeningSocket(std::uint16_t port) {
  for (int descriptor = 0; descriptor < 1024; ++descriptor) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    int isListening = 0;
    socklen_t flagSize = sizeof isListening;
    if (::getsockname(descriptor, reinterpret_cast<sockaddr *>(&address), &size) == 0 &&
        ::getsockopt(descriptor, SOL_SOCKET, SO_ACCEPTCONN, &isListening, &flagSize) == 0 &&
        isListening != 0 && address.sin_port == htons(port)) {
      return descriptor;
    }
  }
  return -1;
}

}  // namespace

TEST_F(HttpServerTest, AnswersACall) {
  const auto answer = client().get(kPrefix + "getorderpercarton/D%202%2F%C3%9F");
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.header("Content-Type"), "application/json; charset=utf-8");
  EXPECT_EQ(nlohmann::json::parse(answer.body).size(), 1U);
}

TEST_F(HttpServerTest, AcceptsAPickingWithThreeBytes) {
  const auto answer = client().post(kPrefix + "sendpick", pickingJson(2).dump(1), kJsonType);
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.body, "\"0\"");
}

TEST_F(HttpServerTest, SendsTheLengthToHead) {
  const auto whole = client().get(kPrefix + "getorderpercarton/D1");
  const auto head = client().request("HEAD", kPrefix + "getorderpercarton/D1");
  EXPECT_EQ(head.status, 200);
  EXPECT_EQ(head.body, "");
  EXPECT_EQ(head.header("Content-Length"), std::to_string(whole.body.size()));
}

TEST_F(HttpServerTest, AnswersUnknownPathsInPlainText) {
  const auto answer = client().get("/favicon.ico");
  EXPECT_EQ(answer.status, 404);
  EXPECT_EQ(answer.header("Content-Type"), "text/plain; charset=utf-8");
  EXPECT_EQ(answer.body, "there is no such call");
}

TEST_F(HttpServerTest, AnswersWrongMethodsWithTheRightOnes) {
  const auto answer =
      client().request("PUT", kPrefix + "sendpick", "[]", {{"Content-Type", kJsonType}});
  EXPECT_EQ(answer.status, 405);
  EXPECT_EQ(answer.header("Allow"), "POST");
  EXPECT_EQ(client().request("DELETE", kPrefix + "getitems").status, 405);
  EXPECT_EQ(client().request("PATCH", kPrefix + "getitems", "x").status, 405);
  EXPECT_EQ(client().request("OPTIONS", kPrefix + "getitems").status, 405);
  EXPECT_EQ(client().post("/", "x", "text/plain").status, 404);
}

TEST_F(HttpServerTest, RefusesForms) {
  const auto form = client().post(kPrefix + "sendpick", "a=b", "application/x-www-form-urlencoded");
  EXPECT_EQ(form.status, 400);
  const auto parts = client().post(kPrefix + "sendpick", "--x\r\n\r\nb\r\n--x--\r\n",
                                   "multipart/form-data; boundary=x");
  EXPECT_EQ(parts.status, 400);
  EXPECT_TRUE(parts.body.starts_with("the Content-Type must be application/json, not "));
}

TEST_F(HttpServerTest, RefusesABodyWithoutContentType) {
  const std::string body = pickingJson().dump();
  const std::string length = "Content-Length: " + std::to_string(body.size()) + "\r\n";
  const auto answer = exchangeRaw(server().port(), postOf(length, body));
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 400 ")) << answer;
  EXPECT_TRUE(answer.ends_with("the Content-Type must be application/json, not \"\"")) << answer;
}

TEST_F(HttpServerTest, RefusesWhatIsNotHttp) {
  for (const char *request : {"HELLO\r\n\r\n", "GET #part HTTP/1.1\r\nHost: a\r\n\r\n",
                              "POST # HTTP/1.1\r\nHost: a\r\nContent-Length: 0\r\nContent-Type: "
                              "application/json\r\n\r\n"}) {
    const auto answer = exchangeRaw(server().port(), request);
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 400 ")) << answer;
  }
}

TEST_F(HttpServerTest, TakesABodyAsLargeAsAllowed) {
  std::string body = pickingJson().dump();
  body.resize(std::size_t{16} * 1024 * 1024, ' ');
  const auto answer = client().post(kPrefix + "sendpick", body, kJsonType);
  EXPECT_EQ(answer.body, "\"0\"");
}

TEST_F(HttpServerTest, RefusesALargerBody) {
  const std::string body(std::size_t{16} * 1024 * 1024 + 1, ' ');
  const auto answer = client().post(kPrefix + "sendpick", body, kJsonType);
  EXPECT_EQ(answer.status, 413);
  EXPECT_EQ(answer.body, "the body is larger than 16 MiB");
}

TEST_F(HttpServerTest, AnswersLongPaths) {
  const std::string path = kPrefix + "getorderpercarton/" + std::string(8000, 'a');
  EXPECT_EQ(client().get(path).body, "[]");
  EXPECT_EQ(client().post(path, "", kJsonType).status, 405);
  EXPECT_EQ(client().get(path + std::string(1000, 'a')).status, 414);
  EXPECT_EQ(client().get(kPrefix + "getorderpercarton/a%0Ab").body, "[]");
}

TEST_F(HttpServerTest, StoresIdenticalSendsOfTheSameTimeOnce) {
  std::array<std::future<std::string>, 12> answers;
  for (auto &answer : answers) {
    answer = std::async(std::launch::async, [this] {
      return client().post(kPrefix + "sendpick", pickingJson(50).dump(), kJsonType).body;
    });
  }
  for (auto &answer : answers) {
    EXPECT_EQ(answer.get(), "\"0\"");
  }
  EXPECT_EQ(storedLinesOfServer(), 50);
}

TEST_F(HttpServerTest, NeedsAFreePort) {
  FullStore store;
  const OrderService service(store);
  const std::string where = "127.0.0.1 port " + std::to_string(server().port());
  try {
    Metrics metrics;
    const HttpServer second({.port = server().port()}, handlersOf(service), metrics);
    FAIL() << "two servers listen on one port";
  } catch (const std::runtime_error &error) {
    EXPECT_EQ(error.what(), "can't listen on " + where);
  }
}

TEST_F(HttpServerTest, ReportsThatItCanNoLongerAcceptConnections) {
  const int socket = listeningSocket(server().port());
  ASSERT_GE(socket, 0);
  ::shutdown(socket, SHUT_RDWR);
  EXPECT_TRUE(hasFailed());
}

TEST(HttpServer, AnswersAFailingStoreWithItsReason) {
  FullStore store;
  const OrderService service(store);
  Metrics metrics;
  const HttpServer server({}, handlersOf(service), metrics);
  const auto answer =
      HttpClient(server.port()).post(kPrefix + "sendpick", pickingJson().dump(), kJsonType);
  EXPECT_EQ(answer.status, 500);
  EXPECT_EQ(answer.body, "the disk is full");
  EXPECT_EQ(answer.header("Content-Type"), "text/plain; charset=utf-8");
}

TEST(HttpServer, RefusesABodyThatDoesNotArriveInTime) {
  FullStore store;
  const OrderService service(store);
  Metrics metrics;
  const HttpServer server({.limits = {.request = std::chrono::milliseconds(50)}},
                          handlersOf(service), metrics);
  const std::string type = "Content-Type: application/json\r\n";
  for (const std::string &request :
       {postOf(type + "Content-Length: 1000\r\n", pickingJson().dump()),
        postOf(type + "Transfer-Encoding: chunked\r\n", "5\r\n[{\"ba")}) {
    const RawConnection connection(server.port());
    connection.sendAll(request);
    const auto answer = connection.receiveAll();
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 408 ")) << answer;
    EXPECT_TRUE(answer.ends_with("the request did not arrive in time")) << answer;
  }
}

TEST_F(HttpServerTest, RefusesABodyThatIsCutShort) {
  const RawConnection connection(server().port());
  connection.sendAll(postOf("Content-Length: 1000\r\n", "[{"));
  connection.endSending();
  const auto answer = connection.receiveAll();
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 400 ")) << answer;
  EXPECT_TRUE(answer.ends_with("the request is cut short")) << answer;
}

TEST_F(HttpServerTest, AnswersThoughManyHaveSentHalfARequest) {
  std::vector<std::unique_ptr<RawConnection>> halfOpen;
  for (int i = 0; i < 100; ++i) {
    for (const std::string &start :
         {std::string(), std::string("GET / HTTP/1.1\r\nHo"),
          postOf("Content-Type: application/json\r\nContent-Length: 1000\r\n", "[{"),
          postOf("Content-Type: application/json\r\nTransfer-Encoding: chunked\r\n", "5\r\n[")}) {
      halfOpen.push_back(std::make_unique<RawConnection>(server().port()));
      halfOpen.back()->sendAll(start);
    }
  }
  const auto lookup = client().get(kPrefix + "getorderpercarton/D1");
  EXPECT_EQ(lookup.status, 200);
  const auto sent = client().post(kPrefix + "sendpick", pickingJson().dump(), kJsonType);
  EXPECT_EQ(sent.body, "\"0\"");
}

TEST_F(HttpServerTest, AnswersMoreClientsThanItMayKeep) {
  std::vector<std::unique_ptr<RawConnection>> silent;
  for (int i = 0; i < 450; ++i) {
    silent.push_back(std::make_unique<RawConnection>(server().port()));
  }
  const auto lookup = client().get(kPrefix + "getorderpercarton/D1");
  EXPECT_EQ(lookup.status, 200);
  EXPECT_EQ(silent.front()->receiveAll(), "");
}

TEST_F(HttpServerTest, RefusesAHeadThatDoesNotEnd) {
  std::string head = "GET / HTTP/1.1\r\n";
  while (head.size() <= std::size_t{64} * 1024) {
    head += "Header: " + std::string(1000, 'x') + "\r\n";
  }
  const auto answer = exchangeRaw(server().port(), head);
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 431 ")) << answer;
}

TEST(HttpServer, FreesItsPortAtItsEnd) {
  FullStore store;
  const OrderService service(store);
  Metrics metrics;
  const std::uint16_t port = HttpServer({}, handlersOf(service), metrics).port();
  EXPECT_EQ(HttpServer({.port = port}, handlersOf(service), metrics).port(), port);
}

}  // namespace cartonpick::orders
