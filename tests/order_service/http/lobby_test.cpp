#include "http/lobby.h"

#include <array>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace cartonpick::orders {

namespace {

constexpr std::chrono::hours kNever(1);
constexpr std::chrono::minutes kPatience(1);
constexpr std::size_t kMany = 1000;

/// The two ends of a connection. Its server's end belongs to whoever it is given to.
class Line {
 public:
  Line() {
    std::array<int, 2> ends{};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    m_client = ends[0];
    m_server = ends[1];
  }
  Line(const Line &) = delete;
  Line &operator=(const Line &) = delete;
  ~Line() {
    if (m_client >= 0) {
      ::close(m_client);
    }
  }

  int server() const { return m_server; }
  void send(const std::string &bytes) const {
    EXPECT_EQ(::send(m_client, bytes.data(), bytes.size(), MSG_NOSIGNAL),
              static_cast<ssize_t>(bytes.size()));
  }
  void hangUp() { ::close(std::exchange(m_client, -1)); }
  /// Waits for the other side to end.
  bool isEnded() const {
    char byte = 0;
    return ::recv(m_client, &byte, 1, 0) <= 0;
  }

 private:
  int m_client = -1;
  int m_server = -1;
};

/// Those who left a lobby, in their order.
class Exit {
 public:
  Lobby::Leave door() {
    return [this](int socket, std::string request) {
      ::close(socket);
      const std::lock_guard lock(m_mutex);
      m_requests.push_back(std::move(request));
      m_hasMore.notify_all();
    };
  }
  /// Waits for so many of them.
  std::vector<std::string> requests(std::size_t count) {
    std::unique_lock lock(m_mutex);
    EXPECT_TRUE(m_hasMore.wait_for(lock, kPatience, [&] { return m_requests.size() >= count; }));
    return m_requests;
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_hasMore;
  std::vector<std::string> m_requests;
};

const std::string kWhole = "GET / HTTP/1.1\r\n\r\n";

}  // namespace

TEST(Lobby, LetsAWholeRequestOut) {
  Exit exit;
  Lobby lobby({kNever, kMany, kMany}, exit.door());
  const Line line;
  lobby.enter(line.server());
  line.send(kWhole.substr(0, 5));
  line.send(kWhole.substr(5));
  EXPECT_EQ(exit.requests(1), std::vector{kWhole});
}

TEST(Lobby, KeepsNobodyWaitingForThoseWhoSendNothing) {
  Exit exit;
  Lobby lobby({kNever, kMany, kMany}, exit.door());
  const std::array<Line, 200> silent;
  for (const Line &line : silent) {
    lobby.enter(line.server());
  }
  const Line line;
  lobby.enter(line.server());
  line.send(kWhole);
  EXPECT_EQ(exit.requests(1), std::vector{kWhole});
}

TEST(Lobby, DropsWhoWaitsLongestWhenThereAreTooMany) {
  Exit exit;
  Lobby lobby({kNever, 2, kMany}, exit.door());
  const Line first;
  const Line second;
  const Line third;
  for (const Line *line : {&first, &second, &third}) {
    lobby.enter(line->server());
    line->send("GET");
  }
  EXPECT_TRUE(first.isEnded());
  second.send(kWhole.substr(3));
  third.send(kWhole.substr(3));
  EXPECT_EQ(exit.requests(2), (std::vector{kWhole, kWhole}));
}

TEST(Lobby, DropsWhoWaitsLongestWhenTheySentTooMuch) {
  Exit exit;
  Lobby lobby({kNever, kMany, 100}, exit.door());
  const Line first;
  const Line second;
  lobby.enter(first.server());
  first.send("GET /" + std::string(60, 'x'));
  lobby.enter(second.server());
  second.send("GET /" + std::string(60, 'x'));
  EXPECT_TRUE(first.isEnded());
  second.send(" HTTP/1.1\r\n\r\n");
  EXPECT_EQ(exit.requests(1).size(), 1U);
}

TEST(Lobby, LetsOutWhatThereIsOfARequestThatStalls) {
  Exit exit;
  Lobby lobby({std::chrono::milliseconds(1), kMany, kMany}, exit.door());
  const Line line;
  line.send("GET /");
  lobby.enter(line.server());
  EXPECT_EQ(exit.requests(1), std::vector<std::string>{"GET /"});
}

TEST(Lobby, LetsOutWhatThereIsOfARequestWhoseSenderIsGone) {
  Exit exit;
  Lobby lobby({kNever, kMany, kMany}, exit.door());
  Line line;
  line.send("GET /");
  line.hangUp();
  lobby.enter(line.server());
  EXPECT_EQ(exit.requests(1), std::vector<std::string>{"GET /"});
}

TEST(Lobby, EndsConnectionsOverWhichNothingCame) {
  Exit exit;
  Lobby lobby({std::chrono::milliseconds(1), kMany, kMany}, exit.door());
  const Line line;
  lobby.enter(line.server());
  EXPECT_TRUE(line.isEnded());
  EXPECT_TRUE(exit.requests(0).empty());
}

TEST(Lobby, EndsWithThoseWhoseRequestsHaveArrived) {
  Exit exit;
  const Line silent;
  const Line line;
  {
    Lobby lobby({kNever, kMany, kMany}, exit.door());
    line.send(kWhole);
    lobby.enter(silent.server());
    lobby.enter(line.server());
  }
  EXPECT_EQ(exit.requests(1), std::vector{kWhole});
  EXPECT_TRUE(silent.isEnded());
}

}  // namespace cartonpick::orders
