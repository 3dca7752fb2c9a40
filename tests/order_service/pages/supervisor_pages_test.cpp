#include "pages/supervisor_pages.h"

#include "sample_data.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

class SupervisorPagesTest : public testing::Test {
 protected:
  SupervisorPagesTest() { m_store.load(sampleDeliveries()); }

  std::optional<Answer> answer(const std::string &target, const std::string &method = "GET") const {
    return m_pages.answer({.method = method, .target = target, .contentType = {}, .body = {}});
  }
  std::string page(const std::string &target) const { return answer(target).value().body; }
  bool has(const std::string &target, const std::string &part) const {
    return page(target).find(part) != std::string::npos;
  }
  void send(const std::string &item, std::int32_t quantity) {
    PickReport line = pickReport();
    line.item = item;
    line.quantity = quantity;
    m_store.store({line});
  }
  SqlStore &store() { return m_store; }

 private:
  SqlStore m_store{SqlAddress(SqlAddress::kInMemory)};
  SupervisorPages m_pages{m_store};
};

}  // namespace

TEST_F(SupervisorPagesTest, AreHtml) {
  for (const std::string target : {"/", "/?q=x", "/deliveries/D1", "/deliveries/D1/sheet"}) {
    for (const std::string method : {"GET", "HEAD"}) {
      const auto page = answer(target, method);
      ASSERT_TRUE(page) << target;
      EXPECT_EQ(page->status, 200) << target;
      EXPECT_EQ(page->contentType, "text/html; charset=utf-8") << target;
      EXPECT_TRUE(page->body.starts_with("<!DOCTYPE html>\n<html lang=\"en\">")) << target;
    }
  }
}

TEST_F(SupervisorPagesTest, LeaveOtherPathsAlone) {
  for (const std::string target :
       {"", "/x", "/index.html", "/deliveries", "/deliveries/D1/", "/deliveries/D1/sheets",
        "/deliveries/D1/x/sheet", "/qir_pick/servicepick.svc/json/getitems", "*"}) {
    EXPECT_FALSE(answer(target)) << target;
  }
}

TEST_F(SupervisorPagesTest, AnswerNoOtherMethod) {
  for (const std::string target : {"/", "/deliveries/D1"}) {
    const auto refusal = answer(target, "POST");
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->status, 405);
    EXPECT_EQ(refusal->allow, "GET, HEAD");
  }
}

TEST_F(SupervisorPagesTest, ListEveryDeliveryWithALinkToIt) {
  EXPECT_TRUE(has("/", "<a href=\"/deliveries/D1\">D1</a>"));
  EXPECT_TRUE(has("/", "<a href=\"/deliveries/D%202%2F%C3%9F\">D 2/ß</a>"));
  EXPECT_TRUE(has("/", "Ann &amp; Söhne"));
  EXPECT_TRUE(has("/", "2 deliveries, the last change first"));
}

TEST_F(SupervisorPagesTest, ListWhatASearchFinds) {
  EXPECT_TRUE(has("/?q=d1", ">D1</a>"));
  EXPECT_FALSE(has("/?q=d1", ">D 2/ß</a>"));
  EXPECT_TRUE(has("/?q=d1", "1 delivery found for “d1”"));
  EXPECT_FALSE(has("/?q=a+%26", ">D1</a>"));
  EXPECT_TRUE(has("/?q=n+%26", ">D1</a>"));
}

TEST_F(SupervisorPagesTest, ShowASearchAsItWasTyped) {
  EXPECT_TRUE(has("/?q=%22%3E%3Cb%3E", "value=\"&quot;&gt;&lt;b&gt;\""));
  EXPECT_TRUE(has("/?q=%22%3E%3Cb%3E", "No delivery has a number that starts with “&quot;&gt;"));
  EXPECT_FALSE(has("/?q=%22%3E%3Cb%3E", "<b>"));
}

TEST_F(SupervisorPagesTest, SayThatThereIsNothing) {
  store().replace({{}, {}});
  EXPECT_TRUE(has("/", "There are no deliveries yet."));
}

TEST_F(SupervisorPagesTest, ShowTheStateInWords) {
  EXPECT_TRUE(has("/deliveries/D1", "○</span> open</span>"));
  send("20138A", 4);
  EXPECT_TRUE(has("/deliveries/D1", "±</span> short and over</span>"));
  EXPECT_TRUE(has("/", "±</span> short and over</span>"));
}

TEST_F(SupervisorPagesTest, ShowTheLinesOfADelivery) {
  send("20138A", 1);
  EXPECT_TRUE(has("/deliveries/D1", "<h2>Box C001</h2><p>1 of 6 picked</p>"));
  EXPECT_TRUE(has("/deliveries/D1", "<th scope=\"row\">20138A</th>"));
  EXPECT_TRUE(has("/deliveries/D1", "CREAM BOWL &quot;16CM&quot;"));
  EXPECT_TRUE(has("/deliveries/D1", "data-label=\"Ordered\">3</td>"));
  EXPECT_TRUE(has("/deliveries/D1", "data-label=\"Difference\">−2</td>"));
  EXPECT_TRUE(has("/deliveries/D1", "SO-1, ordered 2026-01-31, to be shipped 2026-02-28"));
}

TEST_F(SupervisorPagesTest, ShowWhatACorrectionReplaced) {
  send("20138A", 5);
  EXPECT_FALSE(has("/deliveries/D1", "was "));
  send("20138A", -1);
  send("20138A", 3);
  EXPECT_TRUE(has("/deliveries/D1", "3 <span class=\"note\">was 5, then −1</span>"));
}

TEST_F(SupervisorPagesTest, MarkWhatWasNotOrdered) {
  EXPECT_FALSE(has("/deliveries/D1", "not ordered"));
  send("<X>", 2);
  EXPECT_TRUE(has("/deliveries/D1", "<th scope=\"row\">&lt;X&gt;</th>"));
  EXPECT_TRUE(has("/deliveries/D1", "not ordered"));
  EXPECT_FALSE(has("/deliveries/D1/sheet", "&lt;X&gt;"));
}

TEST_F(SupervisorPagesTest, MarkAnArticleThatIsUnknown) {
  PickReport teapot = pickReport();
  teapot.item = "20138D";
  teapot.barcode = "5012746100031";
  store().store({teapot});
  EXPECT_TRUE(has("/deliveries/D1", "not ordered"));
  EXPECT_FALSE(has("/deliveries/D1", "unknown article"));
  send("X", 1);
  EXPECT_TRUE(has("/deliveries/D1", "unknown article"));
}

TEST_F(SupervisorPagesTest, MarkWhatIsMoreThanOrdered) {
  send("20138A", 3);
  EXPECT_FALSE(has("/deliveries/D1", "more than ordered"));
  send("20138A", 4);
  EXPECT_TRUE(has("/deliveries/D1", "4 <span class=\"state yellow\">more than ordered</span>"));
}

TEST_F(SupervisorPagesTest, ReopenADeliveryIfTheyMay) {
  SupervisorPages pages(store(), true);
  const auto answerOf = [&](const std::string &target, const std::string &method) {
    return pages.answer({.method = method, .target = target, .contentType = {}, .body = {}});
  };
  const std::string form = "action=\"/deliveries/D1/reopen\"";
  EXPECT_EQ(answerOf("/deliveries/D1", "GET")->body.find(form), std::string::npos);
  send("20138A", 5);
  EXPECT_NE(answerOf("/deliveries/D1", "GET")->body.find(form), std::string::npos);
  EXPECT_EQ(answerOf("/deliveries/D1/reopen", "GET")->allow, "POST");
  const auto done = answerOf("/deliveries/D1/reopen", "POST");
  EXPECT_EQ(done->status, 303);
  EXPECT_EQ(done->headers.at(0), std::pair(std::string("Location"), std::string("/deliveries/D1")));
  EXPECT_TRUE(has("/deliveries/D1", "○</span> open</span>"));
  EXPECT_TRUE(has("/deliveries/D1", "<dt>Reopened</dt>"));
  EXPECT_TRUE(has("/deliveries/D1", "undone 5"));
  EXPECT_EQ(answerOf("/deliveries/%FF/reopen", "POST")->status, 404);
}

TEST_F(SupervisorPagesTest, ReopenNothingWithoutAToken) {
  send("20138A", 5);
  EXPECT_FALSE(has("/deliveries/D1", "reopen"));
  EXPECT_FALSE(answer("/deliveries/D1/reopen", "POST"));
  EXPECT_TRUE(store().delivery("D1").isSent);
}

TEST_F(SupervisorPagesTest, FindADeliveryByItsNumberByteByByte) {
  EXPECT_TRUE(has("/deliveries/D%202%2F%C3%9F", "<h1>Delivery D 2/ß</h1>"));
  EXPECT_TRUE(has("/deliveries/D%202%2F%C3%9F", "href=\"/deliveries/D%202%2F%C3%9F/sheet\""));
  for (const std::string unknown : {"", "d1", "D1%20", "D1%00", "%FF", "%", "%3Cb%3E"}) {
    for (const std::string sheet : {"", "/sheet"}) {
      const auto page = answer("/deliveries/" + unknown + sheet);
      ASSERT_TRUE(page) << unknown;
      EXPECT_EQ(page->status, 404) << unknown;
      EXPECT_NE(page->body.find("There is no delivery “"), std::string::npos) << unknown;
      EXPECT_EQ(page->body.find("<b>"), std::string::npos) << unknown;
    }
  }
}

TEST_F(SupervisorPagesTest, HaveASheetWithABarcodeOfDeliveryBoxAndArticle) {
  for (const std::string code : {"Code 128 D1", "Code 128 C001", "EAN-13 5012746100000"}) {
    EXPECT_TRUE(has("/deliveries/D1/sheet", "aria-label=\"" + code + '"')) << code;
  }
  EXPECT_TRUE(has("/deliveries/D%202%2F%C3%9F/sheet",
                  "<figure class=\"code\"><figcaption>D 2/ß</figcaption>"));
}

TEST_F(SupervisorPagesTest, HaveNoScriptAndNoStyleOfTheirOwn) {
  send("20138A", 5);
  for (const std::string target :
       {"/", "/?q=x", "/deliveries/D1", "/deliveries/D1/sheet", "/deliveries/nowhere"}) {
    EXPECT_FALSE(has(target, "<style")) << target;
    EXPECT_FALSE(has(target, "style=")) << target;
    EXPECT_FALSE(has(target, "<script>")) << target;
    EXPECT_FALSE(has(target, " onclick")) << target;
    EXPECT_FALSE(has(target, "data:")) << target;
    EXPECT_TRUE(has(target, "<link rel=\"stylesheet\" href=\"/assets/")) << target;
  }
  EXPECT_TRUE(has("/", "<script src=\"/assets/live.js\" defer></script>"));
  EXPECT_FALSE(has("/deliveries/D1/sheet", "<script"));
}

TEST_F(SupervisorPagesTest, HaveTheNumberOnEveryPageOfPaper) {
  EXPECT_TRUE(
      has("/deliveries/D%202%2F%C3%9F/sheet", "href=\"/deliveries/D%202%2F%C3%9F/sheet.css\""));
  const auto style = answer("/deliveries/D%202%2F%C3%9F/sheet.css");
  EXPECT_EQ(style->contentType, "text/css; charset=utf-8");
  EXPECT_NE(style->body.find("content: \"Delivery\\20 D\\20 2\\2f ß\""), std::string::npos)
      << style->body;
}

}  // namespace cartonpick::orders
