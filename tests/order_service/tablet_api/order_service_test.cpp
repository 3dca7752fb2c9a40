#include "tablet_api/order_service.h"

#include "json/order_json.h"
#include "sample_data.h"
#include "store/sql_store.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace cartonpick::orders {

namespace {

using Json = nlohmann::json;

const std::string kPrefix = "/qir_pick/servicepick.svc/json/";
const std::string kOrderOf = kPrefix + "getorderpercarton/";
constexpr auto kPlainText = "text/plain; charset=utf-8";

class OrderServiceTest : public testing::Test {
 protected:
  OrderServiceTest() { m_store.load(sampleDeliveries()); }

  Answer get(const std::string &target) const {
    return m_service.answer({.method = "GET", .target = target, .contentType = {}, .body = {}});
  }

  Answer send(const Json &picking) const { return send(picking.dump(), kJsonType); }

  Answer send(const std::string &body, const std::string &contentType) const {
    return m_service.answer({.method = "POST",
                             .target = kPrefix + "sendpick",
                             .contentType = contentType,
                             .body = body});
  }

  Answer call(const std::string &method, const std::string &name) const {
    return m_service.answer(
        {.method = method, .target = kPrefix + name, .contentType = kJsonType, .body = {}});
  }

 private:
  SqlStore m_store{SqlAddress(SqlAddress::kInMemory)};
  OrderService m_service{m_store};
};

std::string members(const nlohmann::ordered_json &object) {
  std::string names;
  for (const auto &member : object.items()) {
    names += member.key() + ' ';
  }
  return names;
}

}  // namespace

TEST_F(OrderServiceTest, AnswersTheLinesOfADelivery) {
  const Answer answer = get(kOrderOf + "D1");
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.contentType, "application/json; charset=utf-8");
  const Json lines = Json::parse(answer.body);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], orderLineJson());
}

TEST_F(OrderServiceTest, WritesTheMembersOfALineInTheirUsualOrder) {
  const auto lines = nlohmann::ordered_json::parse(get(kOrderOf + "D1").body);
  EXPECT_EQ(members(lines[0]),
            "cusname brand cdate date doc ordernum item barcode descr qty carton ");
}

TEST_F(OrderServiceTest, AnswersAnEmptyArrayForAnUnknownDelivery) {
  EXPECT_EQ(get(kOrderOf + "D3").body, "[]");
  EXPECT_EQ(get(kOrderOf).body, "[]");
}

TEST_F(OrderServiceTest, ComparesTheDecodedNumberByteByByte) {
  EXPECT_EQ(Json::parse(get(kOrderOf + "D%202%2F%C3%9F").body).size(), 1U);
  EXPECT_EQ(Json::parse(get(kOrderOf + "%441").body).size(), 2U);
  for (const std::string other : {"d1", "D1%20", "%20D1", "D1%00", "D+2%2F%C3%9F", "D%202%2Fss"}) {
    EXPECT_EQ(get(kOrderOf + other).body, "[]") << other;
  }
}

TEST_F(OrderServiceTest, ReadsTheQueryAfterAQuestionMark) {
  EXPECT_EQ(Json::parse(get(kOrderOf + "D1?x=1/2").body).size(), 2U);
  EXPECT_EQ(get(kOrderOf + "D1%3F").body, "[]");
}

TEST_F(OrderServiceTest, RefusesANumberThatIsNotPercentEncodedRightly) {
  const Answer answer = get(kOrderOf + "D%1");
  EXPECT_EQ(answer.status, 400);
  EXPECT_EQ(answer.body, "a % in the delivery number is not followed by two hex digits");
}

TEST_F(OrderServiceTest, AnswersTheWholeCatalogue) {
  const auto articles = nlohmann::ordered_json::parse(get(kPrefix + "getitems").body);
  ASSERT_EQ(articles.size(), 4U);
  EXPECT_EQ(members(articles[0]), "barcode item descr ");
  EXPECT_EQ(articles[0]["descr"], "TEAPOT");
  EXPECT_EQ(articles[2]["descr"], "CREAM BOWL \"16CM\"");
}

TEST_F(OrderServiceTest, AcceptsAPickingWithTheDigitZero) {
  const Answer answer = send(pickingJson(2));
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.contentType, "application/json; charset=utf-8");
  EXPECT_EQ(answer.body, "\"0\"");
}

TEST_F(OrderServiceTest, SaysThatADeliveryHasBeenSent) {
  send(pickingJson());
  EXPECT_EQ(get(kOrderOf + "D1").body, "\"This picking has already been sent to the server\"");
  EXPECT_EQ(Json::parse(get(kOrderOf + "D%202%2F%C3%9F").body).size(), 1U);
}

TEST_F(OrderServiceTest, AcceptsThePickingOfASentDeliveryAgain) {
  send(pickingJson());
  EXPECT_EQ(send(pickingJson()).body, "\"0\"");
  EXPECT_EQ(send(pickingJson(2)).body, "\"0\"");
}

TEST_F(OrderServiceTest, RefusesABodyThatIsWrong) {
  Json picking = pickingJson(3);
  picking[2].erase("qty");
  const Answer answer = send(picking);
  EXPECT_EQ(answer.status, 400);
  EXPECT_EQ(answer.contentType, kPlainText);
  EXPECT_EQ(answer.body, "line 3: \"qty\" is missing");
}

TEST_F(OrderServiceTest, StoresNothingOfARefusedPicking) {
  Json picking = pickingJson(3);
  picking[2]["sent"] = 1;
  send(picking);
  EXPECT_TRUE(Json::parse(get(kOrderOf + "D1").body).is_array());
}

TEST_F(OrderServiceTest, RefusesThePickingOfAnUnknownDelivery) {
  Json picking = pickingJson();
  picking[0]["doc"] = "X";
  const Answer answer = send(picking);
  EXPECT_EQ(answer.status, 400);
  EXPECT_EQ(answer.body, "line 1: delivery \"X\" is unknown");
}

TEST_F(OrderServiceTest, AcceptsParametersOfTheContentType) {
  for (const std::string type :
       {"application/json; charset=utf-8", "Application/JSON", "application/json;charset=UTF-8"}) {
    EXPECT_EQ(send(pickingJson().dump(), type).status, 200) << type;
  }
}

TEST_F(OrderServiceTest, RefusesAnyOtherContentType) {
  for (const std::string type : {"text/json", "", "application/jsonp", "application/x-www-form"}) {
    const Answer answer = send(pickingJson().dump(), type);
    EXPECT_EQ(answer.status, 400);
    EXPECT_EQ(answer.body, "the Content-Type must be application/json, not \"" + type + '"');
  }
}

TEST_F(OrderServiceTest, KnowsNoOtherPath) {
  for (const std::string target :
       {"/", "", "/qir_pick/", "/qir_pick/servicepick.svc/json", "/getitems", "*"}) {
    EXPECT_EQ(get(target).status, 404) << target;
  }
  for (const std::string name : {"", "getitems/", "GetItems", "getorderpercarton", "sendpick/",
                                 "getorderpercarton/D1/", "getorderpercarton/D1/2", "%67etitems"}) {
    EXPECT_EQ(get(kPrefix + name).status, 404) << name;
  }
  EXPECT_EQ(get("/").body, "there is no such call");
  EXPECT_EQ(get("/").contentType, kPlainText);
}

TEST_F(OrderServiceTest, RefusesTheWrongMethod) {
  const Answer answer = call("GET", "sendpick");
  EXPECT_EQ(answer.status, 405);
  EXPECT_EQ(answer.allow, "POST");
  EXPECT_EQ(answer.body, "this call does not answer GET, only POST");
  EXPECT_EQ(call("POST", "getitems").status, 405);
  EXPECT_EQ(call("POST", "getitems").allow, "GET, HEAD");
  EXPECT_EQ(call("DELETE", "getorderpercarton/D1").status, 405);
}

TEST_F(OrderServiceTest, AnswersHeadLikeGet) {
  EXPECT_EQ(call("HEAD", "getitems").body, get(kPrefix + "getitems").body);
}

}  // namespace cartonpick::orders
