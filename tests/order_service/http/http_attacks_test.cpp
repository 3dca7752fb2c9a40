#include "http/http_server.h"
#include "http/strange_requests.h"
#include "http_client.h"
#include "raw_connection.h"
#include "sample_data.h"
#include "store/sql_store.h"
#include "tablet_api/order_service.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

const std::string kPrefix = "/qir_pick/servicepick.svc/json/";

/// The tablets' calls over HTTP, on a store with the sample deliveries.
class HttpAttacksTest : public testing::Test {
 protected:
  HttpAttacksTest() { m_store.load(sampleDeliveries()); }

  std::uint16_t port() const { return m_server.port(); }
  HttpClient client() const { return HttpClient(port()); }
  bool isAnswering() const { return client().get(kPrefix + "getorderpercarton/D1").status == 200; }
  std::size_t storedReports() const { return m_store.picked({}).size(); }
  std::string metrics() const { return m_metrics.text(); }

 private:
  SqlStore m_store{SqlAddress(SqlAddress::kInMemory)};
  OrderService m_service{m_store};
  Metrics m_metrics;
  HttpServer m_server{
      {},
      {.answer = [this](const Request &request) { return m_service.answer(request); }},
      m_metrics};
};

/// A report that no other one equals.
std::string reportBody(std::int32_t quantity) {
  nlohmann::json picking = pickingJson(1);
  picking.at(0).at("qty") = quantity;
  return picking.dump();
}

}  // namespace

TEST_F(HttpAttacksTest, AnswersTheSameWhateverRangesAreAskedFor) {
  std::string ranges = "bytes=-";
  for (int i = 0; i < 800; ++i) {
    ranges += ",-";
  }
  const Reply whole = client().get(kPrefix + "getitems");
  for (const std::string &range : {ranges, std::string("bytes=0-1")}) {
    const Reply reply = client().get(kPrefix + "getitems", {{"Range", range}});
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, whole.body);
  }
}

TEST_F(HttpAttacksTest, UnpacksNoBody) {
  for (const std::string coding : {"br", "gzip", "deflate", "gzip, identity", "x"}) {
    const Headers headers = {{"Content-Type", "multipart/form-data; boundary=x"},
                             {"Content-Encoding", coding}};
    const Reply reply = client().request("POST", kPrefix + "sendpick", "\x1f\x8b", headers);
    EXPECT_EQ(reply.status, 415) << coding;
  }
  EXPECT_NE(metrics().find("cartonpick_refusals_total{reason=\"content_encoding\"} 5\n"),
            std::string::npos);
}

TEST_F(HttpAttacksTest, AnswersOthersWhileATrailerDoesNotEnd) {
  const RawConnection attacker(port());
  attacker.sendAll("POST " + kPrefix +
                   "sendpick HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n" +
                   std::string(2000, '\r'));
  EXPECT_TRUE(isAnswering());
  attacker.sendAll(std::string(4000, '\r'));
  EXPECT_TRUE(isAnswering());
  attacker.endSending();
  EXPECT_TRUE(attacker.receiveAll().starts_with("HTTP/1.1 431 "));
}

TEST_F(HttpAttacksTest, StoresNothingOfARefusedRequest) {
  std::int32_t quantity = 1000;
  std::size_t stored = 0;
  for (const StrangeRequest &request :
       strangeRequests(kPrefix + "sendpick", reportBody(quantity))) {
    const auto replies = repliesIn(exchangeRaw(port(), request.bytes));
    ASSERT_EQ(replies.size(), 1U) << request.name;
    EXPECT_EQ(replies[0].status, request.status) << request.name;
    stored = request.status == 200 ? 1 : stored;
    ASSERT_EQ(storedReports(), stored) << request.name;
  }
  EXPECT_EQ(stored, 1U);
}

TEST_F(HttpAttacksTest, AnswersARequestThatArrivesByteByByteTheSame) {
  for (const StrangeRequest &request : strangeRequests(kPrefix + "sendpick", reportBody(1))) {
    const RawConnection connection(port());
    for (const char byte : request.bytes.substr(0, 1000)) {
      connection.trySend({byte});
    }
    connection.trySend(request.bytes.substr(std::min<std::size_t>(1000, request.bytes.size())));
    const auto replies = repliesIn(connection.receiveAll());
    ASSERT_EQ(replies.size(), 1U) << request.name;
    EXPECT_EQ(replies[0].status, request.status) << request.name;
  }
}

TEST_F(HttpAttacksTest, ReadsNoSecondRequestFromTheBodyOfARefusedOne) {
  const std::string hidden = "GET " + kPrefix + "getitems HTTP/1.1\r\nHost: a\r\n\r\n";
  for (const StrangeRequest &request : strangeRequests(kPrefix + "sendpick", hidden)) {
    if (request.status != 200) {
      EXPECT_EQ(repliesIn(exchangeRaw(port(), request.bytes + hidden)).size(), 1U) << request.name;
    }
  }
}

TEST(HttpServer, DoesNotExtendTheTimeOfARequestWithEachByte) {
  Metrics metrics;
  const HttpServer server({.limits = {.request = std::chrono::milliseconds(300)}},
                          {.answer = [](const Request &) { return textAnswer(200, "ok"); }},
                          metrics);
  for (const std::string start :
       {"GET / HTTP/1.1\r\nHost: a\r\nA: ",
        "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 9999\r\n\r\n",
        "POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n\r\n1;",
        "POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n\r\n0\r\nA: "}) {
    const RawConnection slow(server.port());
    slow.sendAll(start);
    while (!slow.waitForBytes(std::chrono::milliseconds(10))) {
      slow.trySend("a");
    }
    slow.endSending();
    EXPECT_TRUE(slow.receiveAll().starts_with("HTTP/1.1 408 ")) << start;
  }
}

}  // namespace cartonpick::orders
