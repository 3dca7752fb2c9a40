// Texts of requests that no store can hold get the same answers whichever the store is.

#include "either_store.h"
#include "sample_data.h"
#include "store/sql_store.h"
#include "web_service.h"

#include <array>

namespace cartonpick::orders {

namespace {

const std::string kCalls = "/qir_pick/servicepick.svc/json/";

/// A byte that starts nothing, a NUL within a known number, an overlong form, a surrogate, a
/// character that is cut off.
constexpr std::array kNoTexts = {"%FF", "D1%00x", "%00", "%C0%80", "%ED%A0%80", "D1%C3"};

}  // namespace

class RequestTextTest : public EitherStoreTest {
 protected:
  RequestTextTest() { m_store.load(sampleDeliveries()); }

  Answer get(const std::string &target) {
    return m_service.answer({.method = "GET", .target = target, .contentType = {}, .body = {}});
  }
  Answer send(const std::string &body) {
    return m_service.answer(
        {.method = "POST", .target = kCalls + "sendpick", .contentType = kJsonType, .body = body});
  }
  SqlStore &store() { return m_store; }

 private:
  SqlStore m_store{address()};
  WebService m_service{m_store, AccessGuard(std::nullopt, true), nullptr};
};

INSTANTIATE_TEST_SUITE_P(Both, RequestTextTest, bothDialects(), dialectName);

TEST_P(RequestTextTest, LooksUpANumberThatIsNoTextAsAnUnknownDelivery) {
  for (const std::string number : kNoTexts) {
    const Answer answer = get(kCalls + "getorderpercarton/" + number);
    EXPECT_EQ(answer.status, 200) << number;
    EXPECT_EQ(answer.body, "[]") << number;
  }
}

TEST_P(RequestTextTest, HasNoPageOfANumberThatIsNoText) {
  for (const std::string number : kNoTexts) {
    EXPECT_EQ(get("/deliveries/" + number).status, 404) << number;
    EXPECT_EQ(get("/?q=" + number).status, 200) << number;
  }
}

TEST_P(RequestTextTest, RefusesAReportThatIsNoTextWithAReason) {
  for (const char *member : {"doc", "ordernum", "box", "item", "barcode"}) {
    for (const std::string text : {"\xFF", "D1\xC3", "\\u0000", "D1\\u0000x", "\\ud800"}) {
      std::string body = pickingJson().dump();
      const std::string name = '"' + std::string(member) + "\":\"";
      const auto begin = body.find(name) + name.size();
      body.replace(begin, body.find('"', begin) - begin, text);
      const Answer answer = send(body);
      EXPECT_EQ(answer.status, 400) << body;
      EXPECT_NE(answer.body, "") << body;
    }
  }
  EXPECT_TRUE(store().picked({}).empty());
}

}  // namespace cartonpick::orders
