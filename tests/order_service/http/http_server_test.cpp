#include "http/http_server.h"

#include "raw_connection.h"
#include "sample_data.h"
#include "store/sql_store.h"
#include "stored_reports.h"
#include "tablet_api/order_service.h"
#include "temporary_folder.h"

#include <array>
#include <future>
#include <gtest/gtest.h>
#include <httplib.h>
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

Handler handlerOf(const OrderService &service) {
  return [&service](const Request &request) { return service.answer(request); };
}

class HttpServerTest : public testing::Test {
 protected:
  HttpServerTest() { m_store.load(sampleDeliveries()); }

  httplib::Client client() const { return httplib::Client("127.0.0.1", m_server.port()); }

  const HttpServer &server() const { return m_server; }
  int storedLinesOfServer() const { return storedReports(m_folder.path("sent.sqlite")); }
  bool hasFailed() { return m_failure.get_future().wait_for(kPatience) == kReady; }

 private:
  static constexpr auto kReady = std::future_status::ready;
  static constexpr auto kPatience = std::chrono::minutes(1);

  TemporaryFolder m_folder;
  SqlStore m_store{SqlAddress(m_folder.path("sent.sqlite"))};
  OrderService m_service{m_store};
  std::promise<void> m_failure;
  HttpServer m_server{handlerOf(m_service), "127.0.0.1", 0, [this] { m_failure.set_value(); }};
};

/// A POST of the body, as bytes, with the given header lines.
std::string postOf(const std::string &headers, const std::string &body) {
  return "POST " + kPrefix + "sendpick HTTP/1.1\r\nHost: test\r\n" + headers + "\r\n" + body;
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
  const auto answer = client().Get(kPrefix + "getorderpercarton/D%202%2F%C3%9F");
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 200);
  EXPECT_EQ(answer->get_header_value("Content-Type"), "application/json; charset=utf-8");
  EXPECT_EQ(nlohmann::json::parse(answer->body).size(), 1U);
}

TEST_F(HttpServerTest, AcceptsAPickingWithThreeBytes) {
  const auto answer = client().Post(kPrefix + "sendpick", pickingJson(2).dump(1), kJsonType);
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 200);
  EXPECT_EQ(answer->body, "\"0\"");
}

TEST_F(HttpServerTest, TellsTheLengthToHead) {
  const auto whole = client().Get(kPrefix + "getorderpercarton/D1");
  const auto head = client().Head(kPrefix + "getorderpercarton/D1");
  ASSERT_TRUE(whole && head);
  EXPECT_EQ(head->status, 200);
  EXPECT_EQ(head->body, "");
  EXPECT_EQ(head->get_header_value("Content-Length"), std::to_string(whole->body.size()));
}

TEST_F(HttpServerTest, AnswersUnknownPathsInPlainText) {
  const auto answer = client().Get("/favicon.ico");
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 404);
  EXPECT_EQ(answer->get_header_value("Content-Type"), "text/plain; charset=utf-8");
  EXPECT_EQ(answer->body, "there is no such call");
}

TEST_F(HttpServerTest, AnswersWrongMethodsWithTheRightOnes) {
  const auto answer = client().Put(kPrefix + "sendpick", "[]", kJsonType);
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 405);
  EXPECT_EQ(answer->get_header_value("Allow"), "POST");
  EXPECT_EQ(client().Delete(kPrefix + "getitems")->status, 405);
  EXPECT_EQ(client().Patch(kPrefix + "getitems", "x", "text/plain")->status, 405);
  EXPECT_EQ(client().Options(kPrefix + "getitems")->status, 405);
  EXPECT_EQ(client().Post("/", "x", "text/plain")->status, 404);
}

TEST_F(HttpServerTest, RefusesForms) {
  const auto form = client().Post(kPrefix + "sendpick", httplib::Params{{"a", "b"}});
  ASSERT_TRUE(form);
  EXPECT_EQ(form->status, 400);
  const auto parts = client().Post(kPrefix + "sendpick", {{"a", "b", "", ""}});
  ASSERT_TRUE(parts);
  EXPECT_EQ(parts->status, 400);
  EXPECT_TRUE(parts->body.starts_with("the Content-Type must be application/json, not "));
}

TEST_F(HttpServerTest, RefusesABodyWithoutContentType) {
  const std::string body = pickingJson().dump();
  const std::string length = "Content-Length: " + std::to_string(body.size()) + "\r\n";
  const auto answer = exchangeRaw(server().port(), postOf(length, body));
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 400 ")) << answer;
  EXPECT_TRUE(answer.ends_with("the Content-Type must be application/json, not \"\"")) << answer;
}

TEST_F(HttpServerTest, RefusesWhatIsNotHttp) {
  for (const char *request :
       {"HELLO\r\n\r\n", "GET #part HTTP/1.1\r\n\r\n",
        "POST # HTTP/1.1\r\nContent-Length: 0\r\nContent-Type: application/json\r\n\r\n"}) {
    const auto answer = exchangeRaw(server().port(), request);
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 400 ")) << answer;
  }
}

TEST_F(HttpServerTest, TakesABodyAsLargeAsAllowed) {
  std::string body = pickingJson().dump();
  body.resize(std::size_t{16} * 1024 * 1024, ' ');
  const auto answer = client().Post(kPrefix + "sendpick", body, kJsonType);
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->body, "\"0\"");
}

TEST_F(HttpServerTest, RefusesALargerBody) {
  const std::string body(std::size_t{16} * 1024 * 1024 + 1, ' ');
  const auto answer = client().Post(kPrefix + "sendpick", body, kJsonType);
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 413);
  EXPECT_EQ(answer->body, "the body is larger than 16 MiB");
}

TEST_F(HttpServerTest, RefusesABodyThatIsLargerOnceUncompressed) {
  httplib::Client compressing = client();
  compressing.set_compress(true);
  const std::string body(std::size_t{16} * 1024 * 1024 + 1, ' ');
  const auto answer = compressing.Post(kPrefix + "sendpick", body, kJsonType);
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 413);
}

TEST_F(HttpServerTest, BearsLongPaths) {
  const std::string path = kPrefix + "getorderpercarton/" + std::string(8000, 'a');
  EXPECT_EQ(client().Get(path)->body, "[]");
  EXPECT_EQ(client().Post(path, "", kJsonType)->status, 405);
  EXPECT_EQ(client().Get(path + std::string(1000, 'a'))->status, 414);
  EXPECT_EQ(client().Get(kPrefix + "getorderpercarton/a%0Ab")->body, "[]");
}

TEST_F(HttpServerTest, AnswersPartOfACallWhenAskedForARange) {
  const auto answer = client().Get(kPrefix + "getitems", httplib::Headers{{"Range", "bytes=0-1"}});
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 206);
  EXPECT_EQ(answer->body, "[{");
}

TEST_F(HttpServerTest, StoresIdenticalSendsOfTheSameTimeOnce) {
  std::array<std::future<std::string>, 12> answers;
  for (auto &answer : answers) {
    answer = std::async(std::launch::async, [this] {
      return client().Post(kPrefix + "sendpick", pickingJson(50).dump(), kJsonType)->body;
    });
  }
  for (auto &answer : answers) {
    EXPECT_EQ(answer.get(), "\"0\"");
  }
  EXPECT_EQ(storedLinesOfServer(), 50);
}

TEST_F(HttpServerTest, CannotShareItsPort) {
  FullStore store;
  const OrderService service(store);
  const std::string where = "127.0.0.1 port " + std::to_string(server().port());
  try {
    const HttpServer second(handlerOf(service), "127.0.0.1", server().port(), [] {});
    FAIL() << "two servers listen on one port";
  } catch (const std::runtime_error &error) {
    EXPECT_EQ(error.what(), "can't listen on " + where);
  }
}

TEST_F(HttpServerTest, TellsWhenItCanNoLongerAcceptConnections) {
  const int socket = listeningSocket(server().port());
  ASSERT_GE(socket, 0);
  ::shutdown(socket, SHUT_RDWR);
  EXPECT_TRUE(hasFailed());
}

TEST(HttpServer, AnswersAFailingStoreWithItsReason) {
  FullStore store;
  const OrderService service(store);
  const HttpServer server(handlerOf(service), "127.0.0.1", 0, [] {});
  httplib::Client client("127.0.0.1", server.port());
  const auto answer = client.Post(kPrefix + "sendpick", pickingJson().dump(), kJsonType);
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 500);
  EXPECT_EQ(answer->body, "the disk is full");
  EXPECT_EQ(answer->get_header_value("Content-Type"), "text/plain; charset=utf-8");
}

TEST(HttpServer, RefusesABodyThatIsCutShort) {
  FullStore store;
  const OrderService service(store);
  const auto stallTimeout = std::chrono::milliseconds(50);
  const HttpServer server(
      handlerOf(service), "127.0.0.1", 0, [] {}, stallTimeout);
  const std::string type = "Content-Type: application/json\r\n";
  for (const std::string &request :
       {postOf(type + "Content-Length: 1000\r\n", pickingJson().dump()),
        postOf(type + "Transfer-Encoding: chunked\r\n", "5\r\n[{\"ba")}) {
    const auto answer = exchangeRaw(server.port(), request);
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 400 ")) << answer;
    EXPECT_TRUE(answer.ends_with("the request is not HTTP as it should be, or cut short"));
  }
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
  const auto lookup = client().Get(kPrefix + "getorderpercarton/D1");
  ASSERT_TRUE(lookup);
  EXPECT_EQ(lookup->status, 200);
  const auto sent = client().Post(kPrefix + "sendpick", pickingJson().dump(), kJsonType);
  ASSERT_TRUE(sent);
  EXPECT_EQ(sent->body, "\"0\"");
}

TEST_F(HttpServerTest, AnswersThoughManyMoreCallThanItKeeps) {
  std::vector<std::unique_ptr<RawConnection>> silent;
  for (int i = 0; i < 450; ++i) {
    silent.push_back(std::make_unique<RawConnection>(server().port()));
  }
  const auto lookup = client().Get(kPrefix + "getorderpercarton/D1");
  ASSERT_TRUE(lookup);
  EXPECT_EQ(lookup->status, 200);
  EXPECT_EQ(silent.front()->receiveAll(), "");
}

TEST_F(HttpServerTest, RefusesAHeadThatDoesNotEnd) {
  std::string head = "GET / HTTP/1.1\r\n";
  while (head.size() <= std::size_t{64} * 1024) {
    head += "Header: " + std::string(1000, 'x') + "\r\n";
  }
  const auto answer = exchangeRaw(server().port(), head);
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 400 ")) << answer;
}

TEST(HttpServer, FreesItsPortInTheEnd) {
  FullStore store;
  const OrderService service(store);
  const std::uint16_t port = HttpServer(handlerOf(service), "127.0.0.1", 0, [] {}).port();
  EXPECT_EQ(HttpServer(handlerOf(service), "127.0.0.1", port, [] {}).port(), port);
}

}  // namespace cartonpick::orders
