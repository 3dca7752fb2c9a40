#include "web_service.h"

#include "postgres_cluster.h"
#include "sample_data.h"
#include "temporary_folder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>

namespace cartonpick::orders {

namespace {

const std::string kCalls = "/qir_pick/servicepick.svc/json/";
const std::string kToken = "token-of-16-signs";

Request get(const std::string &target) {
  return {.method = "GET", .target = target, .contentType = {}, .body = {}};
}

class WebServiceTest : public testing::Test {
 protected:
  WebServiceTest() { m_store.load(sampleDeliveries()); }

  Answer answer(const Request &request) { return m_service.answer(request); }
  Answer withToken(const std::string &target) {
    Request request = get(target);
    request.authorization = "Bearer " + kToken;
    return answer(request);
  }
  void refuse(const Request &request, const Answer &answer) {
    m_service.logRefusal(request, answer);
  }
  std::string log() const { return m_out.str(); }

 private:
  SqlStore m_store{SqlAddress(SqlAddress::kInMemory)};
  std::ostringstream m_out;
  RequestLog m_log{m_out};
  WebService m_service{m_store, AccessGuard(kToken, false), &m_log};
};

}  // namespace

TEST_F(WebServiceTest, AnswersTabletsAndHealthChecksWithoutAToken) {
  EXPECT_EQ(answer(get(kCalls + "getorderpercarton/D1")).status, 200);
  EXPECT_EQ(answer(get(kCalls + "getitems")).status, 200);
  for (const std::string probe : {"/livez", "/readyz", "/healthz"}) {
    EXPECT_EQ(answer(get(probe)).body, "ok\n") << probe;
  }
}

TEST_F(WebServiceTest, AnswersEachKindOfRequestInASeparatePool) {
  EXPECT_EQ(WebService::poolOf(get("/livez")), RequestPool::None);
  EXPECT_EQ(WebService::poolOf(get("/metrics?")), RequestPool::None);
  EXPECT_EQ(WebService::poolOf(get("/readyz")), RequestPool::Probes);
  EXPECT_EQ(WebService::poolOf(get("/healthz")), RequestPool::Probes);
  EXPECT_EQ(WebService::poolOf(get(kCalls + "getitems")), RequestPool::Lookups);
  EXPECT_EQ(WebService::poolOf(get("/")), RequestPool::Lookups);
  EXPECT_EQ(WebService::poolOf({.method = "POST",
                                .target = kCalls + "sendpick",
                                .contentType = kJsonType,
                                .body = "[]"}),
            RequestPool::Sends);
  EXPECT_EQ(
      WebService::poolOf(
          {.method = "POST", .target = "/deliveries/D1/reopen", .contentType = {}, .body = {}}),
      RequestPool::Sends);
}

TEST_F(WebServiceTest, LogsWhatTheHttpServerRefuses) {
  refuse({.method = "GET", .target = "/x", .contentType = {}, .body = {}, .client = "10.0.0.9"},
         textAnswer(408, "late"));
  EXPECT_NE(
      log().find("\"client\":\"10.0.0.9\",\"method\":\"GET\",\"target\":\"/x\",\"status\":408"),
      std::string::npos);
  EXPECT_NE(log().find("\"error\":\"late\""), std::string::npos);
}

TEST_F(WebServiceTest, AnswersEverythingElseOnlyWithTheToken) {
  for (const std::string target : {"/", "/metrics", "/deliveries/D1", "/nowhere"}) {
    EXPECT_EQ(answer(get(target)).status, 401) << target;
  }
  EXPECT_EQ(withToken("/").status, 200);
  EXPECT_EQ(withToken("/metrics").status, 200);
  EXPECT_EQ(withToken("/deliveries/D1").status, 200);
  EXPECT_EQ(withToken("/nowhere").status, 404);
}

TEST_F(WebServiceTest, AnswersTabletsUnderAnyName) {
  Request request = get(kCalls + "getorderpercarton/D1");
  request.host = "a-proxy.example";
  EXPECT_EQ(answer(request).status, 200);
}

TEST_F(WebServiceTest, AcceptsAPickingFromATabletAndNoneFromAWebPage) {
  Request request = {.method = "POST",
                     .target = kCalls + "sendpick",
                     .contentType = kJsonType,
                     .body = pickingJson().dump()};
  for (const std::string origin : {"http://evil.example", "null", "http://127.0.0.1:8080"}) {
    request.origin = origin;
    EXPECT_EQ(answer(request).status, 403) << origin;
  }
  request.origin.clear();
  EXPECT_EQ(answer(request).body, "\"0\"");
}

TEST_F(WebServiceTest, KeepsPagesOutOfFramesAndCaches) {
  using Header = std::pair<std::string, std::string>;
  const auto headers = withToken("/").headers;
  for (const Header &header :
       {Header("Content-Security-Policy",
               "default-src 'none'; base-uri 'none'; form-action 'self'; frame-ancestors 'none'; "
               "img-src 'self'; style-src 'self'; script-src 'self'; connect-src 'self'"),
        Header("X-Content-Type-Options", "nosniff"), Header("Cache-Control", "no-store")}) {
    EXPECT_EQ(std::count(headers.begin(), headers.end(), header), 1) << header.first;
  }
  EXPECT_TRUE(answer(get("/healthz")).headers.empty());
}

TEST_F(WebServiceTest, GivesItsStyleSheetsToThePageThatAsksForTheToken) {
  EXPECT_EQ(answer(get("/assets/screen.css")).status, 200);
  EXPECT_EQ(answer(get("/assets/nothing.css")).status, 401);
  EXPECT_EQ(withToken("/assets/nothing.css").status, 404);
}

TEST_F(WebServiceTest, CountsAndLogsWhatItAnswers) {
  answer(get(kCalls + "getorderpercarton/D1"));
  answer(get(kCalls + "sendpick"));
  const std::string metrics = withToken("/metrics").body;
  EXPECT_NE(metrics.find("cartonpick_requests_total{kind=\"lookup\",status=\"200\"} 1\n"),
            std::string::npos);
  EXPECT_NE(metrics.find("cartonpick_requests_total{kind=\"send\",status=\"405\"} 1\n"),
            std::string::npos);
  EXPECT_NE(log().find("\"target\":\"" + kCalls + "getorderpercarton/D1\",\"status\":200"),
            std::string::npos);
}

TEST_F(WebServiceTest, ReportsHowTheConnectionsOfItsStoreAreUsed) {
  answer(get("/readyz"));
  const std::string metrics = withToken("/metrics").body;
  for (const std::string line : {"cartonpick_store_connections{use=\"reads\"} 8\n",
                                 "cartonpick_store_busy_connections{use=\"writes\"} 0\n",
                                 "cartonpick_store_queue_length{use=\"probes\"} 0\n",
                                 "cartonpick_store_queue_wait_seconds_count{use=\"probes\"} 1\n"}) {
    EXPECT_NE(metrics.find(line), std::string::npos) << line;
  }
}

TEST_F(WebServiceTest, ServesMetricsThatPromtoolAccepts) {
  answer(get(kCalls + "getorderpercarton/D1"));
  const TemporaryFolder folder;
  const std::string file = folder.write("metrics", withToken("/metrics").body);
  constexpr int kNotFound = 127;
  const std::string command = "promtool check metrics <" + file + " >" + file + ".out 2>&1";
  const int code = WEXITSTATUS(std::system(command.c_str()));
  if (code == kNotFound) {
    GTEST_SKIP() << "the package prometheus is not installed";
  }
  std::ostringstream output;
  output << std::ifstream(file + ".out").rdbuf();
  EXPECT_EQ(code, 0) << output.str();
  EXPECT_EQ(output.str(), "");
}

TEST(WebService, IsNotHealthyWithoutItsDatabase) {
  const std::vector<std::pair<std::string, std::string>> kRetryAfter = {{"Retry-After", "1"}};
  PostgresCluster cluster;
  SqlStore store(SqlAddress(cluster.url()));
  WebService service(store, AccessGuard(std::nullopt, true), nullptr);
  EXPECT_EQ(service.answer(get("/healthz")).status, 200);
  cluster.crash();
  while (service.answer(get("/healthz")).status == 200) {
    std::this_thread::yield();
  }
  for (const std::string probe : {"/readyz", "/healthz"}) {
    const Answer answer = service.answer(get(probe));
    EXPECT_EQ(answer.status, 503) << probe;
    EXPECT_EQ(answer.headers, kRetryAfter) << probe;
  }
  EXPECT_EQ(service.answer(get("/livez")).status, 200);
  const Answer lookup = service.answer(get(kCalls + "getorderpercarton/D1"));
  EXPECT_EQ(lookup.status, 503);
  EXPECT_EQ(lookup.headers, kRetryAfter);
  cluster.start();
  EXPECT_EQ(service.answer(get(kCalls + "getorderpercarton/D1")).status, 200);
  while (service.answer(get("/healthz")).status != 200) {
    std::this_thread::yield();
  }
}

TEST(WebService, WritesOnlyToTheLogWhyItsStoreIsNotAvailable) {
  PostgresCluster cluster;
  SqlStore store(SqlAddress(cluster.url() + "&user=postgres&password=top-secret"));
  std::ostringstream requests;
  std::ostringstream errors;
  RequestLog log(requests);
  ErrorLog errorLog(errors);
  WebService service(store, AccessGuard(std::nullopt, true), &log, &errorLog);
  cluster.crash();
  for (const std::string target : {"getitems", "getorderpercarton/D1"}) {
    const Answer answer = service.answer(get(kCalls + target));
    EXPECT_EQ(answer.status, 503) << target;
    EXPECT_EQ(answer.body, "the store is not available") << target;
  }
  EXPECT_EQ(service.answer(get("/healthz")).body, "the store is not available");
  EXPECT_NE(service.answer(get("/")).body.find("the store is not available"), std::string::npos);
  EXPECT_NE(errors.str().find("the store postgresql:///postgres?host=/"), std::string::npos);
  EXPECT_EQ((requests.str() + errors.str()).find("top-secret"), std::string::npos);
}

}  // namespace cartonpick::orders
