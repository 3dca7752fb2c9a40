#include "pages/assets.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

Request get(const std::string &target, const std::string &knownTags = {}) {
  return {
      .method = "GET", .target = target, .contentType = {}, .body = {}, .ifNoneMatch = knownTags};
}

std::string header(const Answer &answer, const std::string &name) {
  const auto found = std::find_if(answer.headers.begin(), answer.headers.end(),
                                  [&](const auto &known) { return known.first == name; });
  return found == answer.headers.end() ? std::string() : found->second;
}

}  // namespace

TEST(Assets, AreFilesWithATypeAndATag) {
  const std::vector<std::pair<std::string, std::string>> files = {
      {"screen.css", "text/css; charset=utf-8"},
      {"sheet.css", "text/css; charset=utf-8"},
      {"live.js", "text/javascript; charset=utf-8"},
      {"icon.svg", "image/svg+xml"},
  };
  EXPECT_EQ(assets().size(), files.size());
  for (const auto &[name, type] : files) {
    const auto answer = assetAnswer(get(assetPath(name)));
    ASSERT_TRUE(answer) << name;
    EXPECT_EQ(answer->status, 200) << name;
    EXPECT_EQ(answer->contentType, type) << name;
    EXPECT_FALSE(answer->body.empty()) << name;
    EXPECT_EQ(header(*answer, "ETag").size(), 18U) << name;
    EXPECT_EQ(header(*answer, "Cache-Control"), "no-cache") << name;
  }
}

TEST(Assets, AreNotSentToABrowserThatHasThem) {
  const std::string path = assetPath("screen.css");
  const std::string tag = header(*assetAnswer(get(path)), "ETag");
  for (const std::string &known : {tag, "\"other\", " + tag, "W/" + tag, std::string("*")}) {
    const auto answer = assetAnswer(get(path, known));
    EXPECT_EQ(answer->status, 304) << known;
    EXPECT_EQ(answer->body, "") << known;
    EXPECT_EQ(header(*answer, "ETag"), tag) << known;
  }
  EXPECT_EQ(assetAnswer(get(path, "\"other\""))->status, 200);
  EXPECT_NE(header(*assetAnswer(get(assetPath("sheet.css"))), "ETag"), tag);
}

TEST(Assets, AreOnlyRead) {
  Request request = get(assetPath("live.js"));
  request.method = "POST";
  EXPECT_EQ(assetAnswer(request)->status, 405);
  EXPECT_EQ(assetAnswer(request)->allow, "GET, HEAD");
}

TEST(Assets, AreNotElsewhere) {
  for (const std::string path :
       {"/", "/assets/", "/assets/nothing", "/assets/../live.js", "/live.js", "/assets/Live.js"}) {
    EXPECT_FALSE(assetAnswer(get(path))) << path;
  }
}

}  // namespace cartonpick::orders
