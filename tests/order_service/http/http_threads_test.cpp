#include "http/http_server.h"
#include "http_client.h"
#include "raw_connection.h"

#include <condition_variable>
#include <future>
#include <gtest/gtest.h>
#include <mutex>
#include <vector>

namespace cartonpick::orders {

namespace {

/// A barrier that requests run into until it is opened.
class Barrier {
 public:
  /// Waits until the barrier is open.
  void pass() {
    std::unique_lock lock(m_mutex);
    ++m_waiting;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_isOpen; });
  }
  void waitFor(std::size_t requests) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_waiting >= requests; });
  }
  void open() {
    const std::lock_guard lock(m_mutex);
    m_isOpen = true;
    m_changed.notify_all();
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::size_t m_waiting = 0;
  bool m_isOpen = false;
};

RequestPool poolOf(const Request &request) {
  return request.target == "/send"      ? RequestPool::Sends
         : request.target == "/probe"   ? RequestPool::Probes
         : request.target == "/at-once" ? RequestPool::None
                                        : RequestPool::Lookups;
}

/// A server whose sends do not return, as those to a database that hangs.
class HttpThreadsTest : public testing::Test {
 protected:
  ~HttpThreadsTest() override { m_barrier.open(); }

  void start(const HttpLimits &limits) {
    HttpHandlers handlers = {.answer = [this](const Request &request) { return answer(request); },
                             .poolOf = poolOf};
    m_server = std::make_unique<HttpServer>(HttpSettings{.limits = limits}, std::move(handlers),
                                            m_metrics);
  }

  HttpServer &server() { return *m_server; }
  Barrier &barrier() { return m_barrier; }
  Reply get(const std::string &target) const { return HttpClient(m_server->port()).get(target); }
  std::future<Reply> begin(const std::string &target) const {
    return std::async(std::launch::async, [this, target] { return get(target); });
  }
  /// Begins as many sends as have a thread, and waits until they are under way.
  std::vector<std::future<Reply>> occupySends() {
    std::vector<std::future<Reply>> sends;
    for (std::size_t i = 1; i <= kSendThreads; ++i) {
      sends.push_back(begin("/send"));
      m_barrier.waitFor(i);
    }
    return sends;
  }
  bool hasMetric(const std::string &line) const {
    return m_metrics.text().find(line + '\n') != std::string::npos;
  }

 private:
  Answer answer(const Request &request) {
    if (request.target == "/send") {
      m_barrier.pass();
    }
    return textAnswer(200, "ok");
  }

  Barrier m_barrier;
  Metrics m_metrics;
  std::unique_ptr<HttpServer> m_server;
};

}  // namespace

TEST_F(HttpThreadsTest, AnswersOtherKindsOfRequestsWhileSendsHang) {
  start({});
  const auto sends = occupySends();
  const auto waiting = begin("/send");
  for (const std::string target : {"/", "/probe", "/at-once"}) {
    EXPECT_EQ(get(target).body, "ok") << target;
  }
  barrier().open();
}

TEST_F(HttpThreadsTest, AnswersARequestThatWaitsTooLongForAThreadWith503) {
  start({.queue = std::chrono::milliseconds(100)});
  const auto sends = occupySends();
  const Reply reply = get("/send");
  EXPECT_EQ(reply.status, 503);
  EXPECT_EQ(reply.header("Retry-After"), "1");
  EXPECT_EQ(reply.body, "the request has waited too long");
  EXPECT_TRUE(hasMetric("cartonpick_refusals_total{reason=\"queue_timeout\"} 1"));
  EXPECT_TRUE(hasMetric("cartonpick_queue_length{pool=\"sends\"} 0"));
  barrier().open();
}

TEST_F(HttpThreadsTest, AnswersWith503WhenTooManyRequestsWait) {
  start({.queuedRequests = 1});
  const auto sends = occupySends();
  const auto first = begin("/send");
  while (!hasMetric("cartonpick_queue_length{pool=\"sends\"} 1")) {
    std::this_thread::yield();
  }
  const Reply reply = get("/send");
  EXPECT_EQ(reply.status, 503);
  EXPECT_EQ(reply.body, "too many requests wait");
  barrier().open();
}

TEST_F(HttpThreadsTest, AnswersWith503WhenTheAnswerTakesTooLong) {
  start({.queue = std::chrono::milliseconds(50), .handler = std::chrono::milliseconds(50)});
  const Reply reply = get("/send");
  EXPECT_EQ(reply.status, 503);
  EXPECT_EQ(reply.body, "the answer takes too long");
  EXPECT_TRUE(hasMetric("cartonpick_pool_busy_threads{pool=\"sends\"} 1"));
  barrier().open();
}

TEST_F(HttpThreadsTest, StopsThoughSendsHang) {
  start({.stop = std::chrono::milliseconds(200)});
  auto sends = occupySends();
  EXPECT_FALSE(server().stop());
  for (auto &send : sends) {
    EXPECT_EQ(send.get().status, 503);
  }
  barrier().open();
}

TEST_F(HttpThreadsTest, AnswersTheRequestsUnderWayWhenItStops) {
  start({});
  auto sends = occupySends();
  auto stopping = std::async(std::launch::async, [this] { return server().stop(); });
  // Its port is free once the server stops.
  while (get("/").status == 200) {
    std::this_thread::yield();
  }
  barrier().open();
  for (auto &send : sends) {
    const Reply reply = send.get();
    EXPECT_EQ(reply.body, "ok");
    EXPECT_EQ(reply.header("Connection"), "close");
  }
  EXPECT_TRUE(stopping.get());
}

}  // namespace cartonpick::orders
