#include "http/request_log.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

namespace cartonpick::orders {

namespace {

nlohmann::json logged(const Request &request, const Answer &answer) {
  std::ostringstream out;
  RequestLog(out).write(request, answer, std::chrono::microseconds(1234));
  EXPECT_EQ(std::count(out.view().begin(), out.view().end(), '\n'), 1);
  return nlohmann::json::parse(out.view());
}

}  // namespace

TEST(RequestLog, WritesALineOfJson) {
  const auto line = logged({.method = "GET",
                            .target = "/x\n\"y\"",
                            .contentType = {},
                            .body = {},
                            .id = "a-1",
                            .client = "10.0.0.9"},
                           {.contentType = "text/html", .body = "12345"});
  EXPECT_EQ(line.at("id"), "a-1");
  EXPECT_EQ(line.at("client"), "10.0.0.9");
  EXPECT_EQ(line.at("method"), "GET");
  EXPECT_EQ(line.at("target"), "/x\n\"y\"");
  EXPECT_EQ(line.at("status"), 200);
  EXPECT_EQ(line.at("bytes"), 5);
  EXPECT_EQ(line.at("ms"), 1.234);
  EXPECT_FALSE(line.contains("error"));
}

TEST(RequestLog, ContainsTheReasonOfARefusal) {
  const auto line = logged({.method = "POST", .target = "/\xFF", .contentType = {}, .body = {}},
                           textAnswer(400, "the array is empty"));
  EXPECT_EQ(line.at("error"), "the array is empty");
  EXPECT_EQ(line.at("target"), "/\xEF\xBF\xBD");
}

TEST(RequestLog, ContainsNoTokensAndNoBodies) {
  const auto line = logged({.method = "POST",
                            .target = "/login",
                            .contentType = {},
                            .body = "token=secret",
                            .authorization = "Bearer secret",
                            .cookie = "cartonpick_token=secret"},
                           {.status = 401, .contentType = "text/html", .body = "secret"});
  EXPECT_EQ(line.dump().find("secret"), std::string::npos);
}

}  // namespace cartonpick::orders
