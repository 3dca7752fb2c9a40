#include "http/request_parser.h"

#include "http/strange_requests.h"

#include <gtest/gtest.h>
#include <tuple>

namespace cartonpick::orders {

namespace {

constexpr auto kTarget = "/qir_pick/servicepick.svc/json/sendpick";

/// What became of a request.
struct Outcome {
  int status = 0;  ///< 200 if it was taken; 0 if more bytes are needed
  std::string method = {};
  std::string target = {};
  std::string host = {};
  std::string body = {};

  bool operator==(const Outcome &) const = default;
};

void PrintTo(const Outcome &outcome, std::ostream *out) {
  *out << outcome.status << ' ' << outcome.method << ' ' << outcome.target << ' ' << outcome.host
       << ' ' << outcome.body.size() << " bytes";
}

/// Reads pieces of a request as a connection does.
class Reading {
 public:
  void add(std::string_view piece) {
    m_received += piece;
    m_received.erase(0, m_parser.read(m_received));
  }

  Outcome outcome() {
    if (m_parser.refusal()) {
      return {.status = m_parser.refusal()->status};
    }
    const Request &request = m_parser.request();
    return {.status = m_parser.isWhole() ? 200 : 0,
            .method = request.method,
            .target = request.target,
            .host = request.host,
            .body = request.body};
  }
  const std::string &rest() const { return m_received; }
  RequestParser &parser() { return m_parser; }

 private:
  HttpLimits m_limits;
  RequestParser m_parser{m_limits};
  std::string m_received;
};

Outcome outcomeOf(std::string_view bytes) {
  Reading reading;
  reading.add(bytes);
  return reading.outcome();
}

std::string getWith(const std::string &fields) {
  return "GET / HTTP/1.1\r\nHost: a\r\n" + fields + "\r\n";
}

}  // namespace

TEST(RequestParser, AcceptsOrRefusesStrangeRequests) {
  for (const StrangeRequest &request : strangeRequests(kTarget, "[1, 2]")) {
    const Outcome outcome = outcomeOf(request.bytes);
    EXPECT_EQ(outcome.status, request.status) << request.name;
    if (request.status == 200) {
      EXPECT_EQ(outcome.target, kTarget) << request.name;
      EXPECT_EQ(outcome.body, "[1, 2]") << request.name;
      EXPECT_EQ(outcome.host.substr(0, 4), "test") << request.name;
    }
  }
}

TEST(RequestParser, ReadsARequestInTheSameWayWhereverItIsCut) {
  for (const StrangeRequest &request : strangeRequests(kTarget, "[1, 2]")) {
    const std::string_view bytes = request.bytes;
    const Outcome whole = outcomeOf(bytes);
    Reading byByte;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      Reading inTwo;
      inTwo.add(bytes.substr(0, i));
      inTwo.add(bytes.substr(i));
      ASSERT_EQ(inTwo.outcome(), whole) << request.name << ", cut at " << i;
      byByte.add(bytes.substr(i, 1));
    }
    EXPECT_EQ(byByte.outcome(), whole) << request.name << ", byte by byte";
  }
}

TEST(RequestParser, WaitsForTheRestOfARequest) {
  for (const StrangeRequest &request : strangeRequests(kTarget, "[1, 2]")) {
    for (std::size_t i = 0; request.status == 200 && i < request.bytes.size(); ++i) {
      const int status = outcomeOf(std::string_view(request.bytes).substr(0, i)).status;
      ASSERT_EQ(status, 0) << request.name << ", of which " << i << " bytes are there";
    }
  }
}

TEST(RequestParser, LeavesTheNextRequestAlone) {
  for (const std::string body : {"Content-Length: 3\r\n\r\nabc",
                                 "Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n0\r\n\r\n"}) {
    Reading reading;
    reading.add("POST / HTTP/1.1\r\nHost: a\r\n" + body + getWith(""));
    EXPECT_EQ(reading.outcome().body, "abc");
    EXPECT_EQ(reading.rest(), getWith(""));
  }
}

TEST(RequestParser, LooksAtEachByteOfALongTrailerOnce) {
  // 4 KiB is all that it ever keeps, so that a byte more is never more than that to look at.
  Reading reading;
  reading.add("POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n");
  std::size_t received = 0;
  while (!reading.parser().refusal() && received < kMebibyte) {
    reading.add("\r");
    ++received;
  }
  ASSERT_TRUE(reading.parser().refusal());
  EXPECT_LE(received, HttpLimits().framingBytes);
}

TEST(RequestParser, RefusesAHeadThatDoesNotEnd) {
  Reading reading;
  reading.add("GET / HTTP/1.1\r\nHost: a\r\n");
  const std::string field = "A: " + std::string(1000, 'a') + "\r\n";
  for (std::size_t size = 0; size < HttpLimits().headBytes; size += field.size()) {
    reading.add(field);
  }
  EXPECT_EQ(reading.outcome().status, 431);
}

TEST(RequestParser, RefusesATargetThatDoesNotEnd) {
  EXPECT_EQ(outcomeOf("GET /" + std::string(HttpLimits().headBytes, 'a')).status, 414);
}

TEST(RequestParser, RefusesABodyThatIsAnnouncedTooLarge) {
  EXPECT_EQ(outcomeOf("POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 16777217\r\n\r\n").status,
            413);
}

TEST(RequestParser, RefusesChunksThatBecomeTooLarge) {
  Reading reading;
  reading.add("POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n\r\n");
  const std::string chunk = "100000\r\n" + std::string(kMebibyte, 'a') + "\r\n";
  for (int i = 0; i < 16; ++i) {
    reading.add(chunk);
    ASSERT_FALSE(reading.parser().refusal()) << i;
  }
  reading.add("1\r\n");
  EXPECT_EQ(reading.outcome().status, 413);
  EXPECT_LE(reading.parser().heldBytes(), HttpLimits().bodyBytes);
}

TEST(RequestParser, ReadsTheHostOfATargetInAbsoluteForm) {
  const Outcome outcome = outcomeOf("GET HTTP://b.example:81?q HTTP/1.1\r\nHost: a\r\n\r\n");
  EXPECT_EQ(outcome.host, "b.example:81");
  EXPECT_EQ(outcome.target, "/?q");
}

TEST(RequestParser, KnowsWhichClientWaitsForContinue) {
  const std::string length = "Content-Length: 3\r\nExpect: 100-Continue\r\n";
  const auto waits = [](const std::string &bytes) {
    Reading reading;
    reading.add(bytes);
    return reading.parser().expectsContinue();
  };
  EXPECT_TRUE(waits(getWith(length)));
  EXPECT_FALSE(waits("GET / HTTP/1.1\r\nHost: a\r\n" + length));
  EXPECT_FALSE(waits(getWith(length) + "abc"));
  EXPECT_FALSE(waits("GET / HTTP/1.0\r\nHost: a\r\n" + length + "\r\n"));
}

TEST(RequestParser, KnowsWhichConnectionsAreKept) {
  const auto keeps = [](const std::string &version, const std::string &fields) {
    Reading reading;
    reading.add("GET / HTTP/" + version + "\r\nHost: a\r\n" + fields + "\r\n");
    return reading.parser().keepsAlive();
  };
  EXPECT_TRUE(keeps("1.1", ""));
  EXPECT_FALSE(keeps("1.1", "Connection: close\r\n"));
  EXPECT_FALSE(keeps("1.0", ""));
  EXPECT_TRUE(keeps("1.0", "Connection: Keep-Alive\r\n"));
}

}  // namespace cartonpick::orders
