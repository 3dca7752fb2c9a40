#include "pages/supervisor_pages.h"

#include "http/percent_decoding.h"
#include "model/picked_delivery.h"
#include "pages/delivery_list_page.h"
#include "pages/delivery_page.h"
#include "pages/delivery_sheet.h"
#include "pages/html.h"

#include <simdjson.h>
#include <utility>
#include <vector>

namespace cartonpick::orders {

namespace {

constexpr std::string_view kDeliveries = "/deliveries/";
constexpr std::string_view kSheet = "/sheet";

/// Whether a store takes it. No delivery has another number.
bool isText(const std::string &number) {
  return simdjson::validate_utf8(number) && number.find('\0') == std::string::npos;
}

Answer wrongMethod(const std::string &method) {
  Answer answer = textAnswer(405, "this page does not answer " + method);
  answer.allow = "GET, HEAD";
  return answer;
}

}  // namespace

std::optional<Answer> SupervisorPages::answer(const Request &request) const {
  std::string_view path(request.target);
  path = path.substr(0, path.find('?'));
  const bool isList = path == "/";
  if (!isList && !path.starts_with(kDeliveries)) {
    return std::nullopt;
  }
  path.remove_prefix(isList ? 1 : kDeliveries.size());
  const bool isSheet = path.ends_with(kSheet);
  path.remove_suffix(isSheet ? kSheet.size() : 0);
  if (path.find('/') != std::string_view::npos) {
    return std::nullopt;
  }
  if (request.method != "GET" && request.method != "HEAD") {
    return wrongMethod(request.method);
  }
  return isList ? list(request.target) : delivery(path, isSheet);
}

Answer SupervisorPages::list(const std::string &target) const {
  const std::string search = queryParameter(target, "q");
  return deliveryListPage(m_store.summaries(search), search);
}

Answer SupervisorPages::delivery(std::string_view encodedNumber, bool isSheet) const {
  const std::optional<std::string> number = percentDecoded(encodedNumber);
  if (!number || !isText(*number)) {
    return unknownDeliveryPage(std::string(encodedNumber));
  }
  const std::vector<OrderLine> lines = m_store.delivery(*number).lines;
  std::vector<ReceivedReport> facts = m_store.picked({.delivery = *number});
  if (lines.empty() && facts.empty()) {
    return unknownDeliveryPage(*number);
  }
  const PickedDelivery picked = pickedDelivery(lines, std::move(facts));
  return isSheet ? deliverySheet(*number, lines, picked) : deliveryPage(*number, lines, picked);
}

}  // namespace cartonpick::orders
