#include "http/incoming_request.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

constexpr std::size_t kMax = IncomingRequest::kMaxBodyBytes;

/// How many of the bytes it takes, one by one, for the request to be whole; 0 if they do not do.
std::size_t bytesToBeWhole(const std::string &bytes) {
  IncomingRequest request;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    request.append(bytes.substr(i, 1));
    if (request.isWhole()) {
      return i + 1;
    }
  }
  return 0;
}

/// Whether that, and nothing less, is a whole request, however it comes.
void expectWhole(const std::string &bytes) {
  EXPECT_EQ(bytesToBeWhole(bytes), bytes.size()) << bytes;
  IncomingRequest atOnce;
  atOnce.append(bytes);
  EXPECT_TRUE(atOnce.isWhole()) << bytes;
  EXPECT_EQ(atOnce.bytes(), bytes);
}

}  // namespace

TEST(IncomingRequest, EndsWithItsHeadWhenNoBodyIsAnnounced) {
  expectWhole("GET / HTTP/1.1\r\n\r\n");
  expectWhole("GET / HTTP/1.1\r\nHost: a\r\nX: b\r\n\r\n");
  expectWhole("POST / HTTP/1.1\r\nContent-Length: 0\r\n\r\n");
  expectWhole("POST / HTTP/1.1\r\nContent-Length: many\r\n\r\n");
  expectWhole("HELLO\r\n\r\n");
}

TEST(IncomingRequest, EndsWithTheBodyThatIsAnnounced) {
  expectWhole("POST / HTTP/1.1\r\nContent-Length: 3\r\n\r\nabc");
  expectWhole("POST / HTTP/1.1\r\ncontent-length:\t 3 \r\nHost: a\r\n\r\n\r\n\r");
  // The first one counts, as it does to who reads it then.
  expectWhole("POST / HTTP/1.1\r\nContent-Length: 2\r\nContent-Length: 4\r\n\r\nab");
}

TEST(IncomingRequest, EndsWithTheLastChunk) {
  const std::string head = "POST / HTTP/1.1\r\nTransfer-Encoding: Chunked\r\n\r\n";
  expectWhole(head + "0\r\n\r\n");
  expectWhole(head + "5\r\nabcde\r\n0\r\n\r\n");
  expectWhole(head + "a;name=value\r\n\r\n0\r\n\r\nabc\r\n0\r\nField: value\r\n\r\n");
  expectWhole(head + "nonsense\r\n");
  expectWhole(head + "fffffffff\r\n");
}

TEST(IncomingRequest, IsNotWholeWithLess) {
  EXPECT_EQ(bytesToBeWhole(""), 0U);
  EXPECT_EQ(bytesToBeWhole("GET / HTTP/1.1\r\nHost: a\r\n"), 0U);
  EXPECT_EQ(bytesToBeWhole("POST / HTTP/1.1\r\nContent-Length: 4\r\n\r\nabc"), 0U);
}

TEST(IncomingRequest, WantsNoMoreOfAHeadThatDoesNotEnd) {
  IncomingRequest request;
  request.append("GET / HTTP/1.1\r\n");
  while (!request.isWhole()) {
    ASSERT_LE(request.bytes().size(), IncomingRequest::kMaxHeadBytes);
    request.append("Header: one of many\r\n");
  }
}

TEST(IncomingRequest, KeepsABodyAsLargeAsAllowed) {
  IncomingRequest request;
  request.append("POST / HTTP/1.1\r\nContent-Length: " + std::to_string(kMax) + "\r\n\r\n");
  request.append(std::string(kMax - 1, 'x'));
  EXPECT_FALSE(request.isWhole());
  request.append("x");
  EXPECT_TRUE(request.isWhole());
  EXPECT_GT(request.bytes().size(), kMax);
}

TEST(IncomingRequest, KeepsNothingOfALargerBodyAndWaitsForItsEnd) {
  const std::string head =
      "POST / HTTP/1.1\r\nContent-Length: " + std::to_string(kMax + 1) + "\r\n\r\n";
  IncomingRequest request;
  request.append(head + "xxx");
  request.append(std::string(kMax - 3, 'x'));
  EXPECT_FALSE(request.isWhole());
  EXPECT_EQ(request.bytes(), head);
  request.append("x");
  EXPECT_TRUE(request.isWhole());
  EXPECT_EQ(request.take(), head);
}

TEST(IncomingRequest, DoesNotWaitForTheEndOfAnEndlessBody) {
  IncomingRequest request;
  request.append("POST / HTTP/1.1\r\nContent-Length: 1000000000000\r\n\r\n");
  for (int i = 0; i < 4; ++i) {
    EXPECT_FALSE(request.isWhole());
    request.append(std::string(kMax, 'x'));
  }
  EXPECT_TRUE(request.isWhole());
}

}  // namespace cartonpick::orders
