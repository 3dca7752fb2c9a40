#include "http/metrics.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

TEST(Metrics, CountRequestsByKindAndStatus) {
  Metrics metrics;
  metrics.count("send", 200, std::chrono::milliseconds(1));
  metrics.count("send", 200, std::chrono::milliseconds(1));
  metrics.count("send", 400, std::chrono::milliseconds(1));
  const std::string text = metrics.text();
  EXPECT_NE(text.find("cartonpick_requests_total{kind=\"send\",status=\"200\"} 2\n"),
            std::string::npos);
  EXPECT_NE(text.find("cartonpick_requests_total{kind=\"send\",status=\"400\"} 1\n"),
            std::string::npos);
}

TEST(Metrics, ContainTheVersionRefusalsAndConnections) {
  Metrics metrics;
  metrics.countRefusal("timeout");
  metrics.countRefusal("timeout");
  metrics.setConnections(3);
  const std::string text = metrics.text();
  for (const std::string line :
       {"cartonpick_build_info{version=\"" CARTONPICK_VERSION "\"} 1\n",
        "cartonpick_refusals_total{reason=\"timeout\"} 2\n", "cartonpick_connections 3\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line;
  }
}

TEST(Metrics, PutTimesIntoBucketsThatGrow) {
  Metrics metrics;
  metrics.count("page", 200, std::chrono::milliseconds(2));
  metrics.count("page", 200, std::chrono::milliseconds(200));
  metrics.count("page", 200, std::chrono::seconds(60));
  const std::string text = metrics.text();
  const std::string bucket = "cartonpick_request_seconds_bucket{kind=\"page\",le=";
  for (const std::string line : {"\"0.001\"} 0\n", "\"0.005\"} 1\n", "\"0.1\"} 1\n", "\"0.5\"} 2\n",
                                 "\"10\"} 2\n", "\"+Inf\"} 3\n"}) {
    EXPECT_NE(text.find(bucket + line), std::string::npos) << line;
  }
  EXPECT_NE(text.find("cartonpick_request_seconds_sum{kind=\"page\"} 60.202\n"), std::string::npos);
  EXPECT_NE(text.find("cartonpick_request_seconds_count{kind=\"page\"} 3\n"), std::string::npos);
}

}  // namespace cartonpick::orders
