// Passes arbitrary requests to the order service, without HTTP. The service must always answer, and
// never with a server error. It must show pages only to requests with the token. No part of a
// request must become markup. Reading must change nothing, and a report that is sent twice must be
// stored once.

#include "Property.h"
#include "RequestInput.h"
#include "web_service.h"

#include <algorithm>
#include <array>
#include <memory>
#include <set>
#include <simdjson.h>

namespace {

using namespace cartonpick::orders;

Deliveries sampleDeliveries() {
  const auto line = [](const std::string &delivery, const Article &article, std::int32_t quantity) {
    return OrderLine{.customer = "Ann & Söhne <GmbH>",
                     .brand = "HEARTHSIDE",
                     .orderDate = "01/31/2026",
                     .shippingDate = "02/28/2026",
                     .delivery = delivery,
                     .order = "SO-1",
                     .article = article,
                     .quantity = quantity,
                     .carton = "C001"};
  };
  const Article mug = {"5012746100004", "20138A", "WHITE ENAMEL MUG"};
  const Article bowl = {"\"<b>'", "20138B", "CREAM BOWL \"16CM\" & <i>"};
  return {{line("4711", mug, 3), line("4711", bowl, 2147483647), line("D 2/ß", bowl, 0)}, {mug}};
}

/// A service and its store, in memory. Both are replaced after an input that changes the store.
class Service {
 public:
  Service() { m_store.load(sampleDeliveries()); }

  /// Each request comes from a different address, because each address has limited guesses.
  Answer answer(Request request) {
    request.client = std::to_string(++m_requests);
    return m_service.answer(request);
  }
  [[nodiscard]] std::vector<ReceivedReport> stored() const { return m_store.picked({}); }

 private:
  std::size_t m_requests = 0;
  SqlStore m_store{SqlAddress(SqlAddress::kInMemory)};
  WebService m_service{m_store, AccessGuard(kFuzzToken, false), nullptr};
};

std::unique_ptr<Service> &service() {
  static auto service = std::make_unique<Service>();
  return service;
}

bool isHtml(const Answer &answer) {
  return answer.contentType.starts_with("text/html");
}

std::set<std::string_view> elementsOf(std::string_view page) {
  std::set<std::string_view> elements;
  for (auto at = page.find('<'); at != std::string_view::npos; at = page.find('<', at + 1)) {
    std::string_view name = page.substr(at + 1);
    name.remove_prefix(name.starts_with('/') ? 1 : 0);
    elements.insert(name.substr(0, name.find_first_of(" >\n/")));
  }
  return elements;
}

Request page(const std::string &target) {
  return {.method = "GET",
          .target = target,
          .contentType = {},
          .body = {},
          .authorization = "Bearer " + kFuzzToken};
}

void addElements(const Answer &answer, std::set<std::string> &elements) {
  const auto added = elementsOf(answer.body);
  elements.insert(added.begin(), added.end());
}

/// The element names of all pages, from requests that inject no markup.
const std::set<std::string> &ourElements() {
  static const std::set<std::string> kElements = [] {
    Service service;
    service.answer({.method = "POST",
                    .target = std::string(OrderService::kPrefix) + "sendpick",
                    .contentType = "application/json",
                    .body = R"([{"barcode":"1","box":"C1","doc":"4711","item":"A","ordernum":"A1",)"
                            R"("qty":1,"datepicked":"2026-02-28 23:59:59","sent":0}])"});
    std::set<std::string> elements;
    for (const std::string target : {"/", "/?q=nothing", "/?q=4711", "/deliveries/4711",
                                     "/deliveries/4711/sheet", "/deliveries/nothing"}) {
      addElements(service.answer(page(target)), elements);
    }
    Request stranger = page("/");
    stranger.authorization.clear();
    addElements(service.answer(stranger), elements);
    return elements;
  }();
  return kElements;
}

void checkMarkup(std::string_view body) {
  for (const std::string_view element : elementsOf(body)) {
    require(ourElements().contains(std::string(element)),
            "no part of a request becomes an element");
  }
}

void checkAnswer(const Request &request, const Answer &answer) {
  constexpr std::array kStatuses = {200, 303, 304, 400, 401, 404, 405};
  require(std::find(kStatuses.begin(), kStatuses.end(), answer.status) != kStatuses.end(),
          "a request is answered or rejected with a known status");
  require((answer.status == 405) == answer.allow.has_value(),
          "a 405 answer lists the allowed methods");
  if (isHtml(answer)) {
    checkMarkup(answer.body);
  }
  if (answer.contentType.starts_with("application/json")) {
    simdjson::dom::parser parser;
    require(parser.parse(answer.body).error() == simdjson::SUCCESS, "JSON is JSON");
  }
  for (const auto &[name, value] : answer.headers) {
    require(value.find_first_of("\r\n") == std::string::npos, "a header is one line");
  }
  const std::string_view target = request.target;
  const std::string_view path = target.substr(0, target.find('?'));
  const bool isOpen = target.starts_with(OrderService::kPrefix) || target.starts_with("/assets/") ||
                      target == "/logout" || path == "/livez" || path == "/readyz" ||
                      path == "/healthz";
  const bool hasToken = request.authorization.find(kFuzzToken) != std::string::npos ||
                        request.cookie.find(kFuzzToken) != std::string::npos ||
                        request.body.find("token") != std::string::npos;
  require(isOpen || hasToken || answer.status == 401, "a page needs the token");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  FuzzInput input(data, size);
  const Request request = requestOf(input);
  const Answer answer = service()->answer(request);
  checkAnswer(request, answer);
  const std::vector<ReceivedReport> stored = service()->stored();
  const bool isSent = request.method == "POST" && answer.status == 200;
  require(isSent || stored.empty(), "only an accepted report is stored");
  if (!stored.empty()) {
    require(service()->answer(request).status == answer.status, "a report can be sent twice");
    require(service()->stored() == stored, "a report that is sent twice is stored once");
    const Request delivery = page("/deliveries/4711");
    checkAnswer(delivery, service()->answer(delivery));
    service() = std::make_unique<Service>();
  }
  return 0;
}
