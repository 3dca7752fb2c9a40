#include "pages/supervisor_pages.h"

#include "http/percent_decoding.h"
#include "model/picked_delivery.h"
#include "model/stored_text.h"
#include "pages/delivery_list_page.h"
#include "pages/delivery_page.h"
#include "pages/delivery_sheet.h"
#include "pages/html.h"

#include <utility>
#include <vector>

namespace cartonpick::orders {

namespace {

constexpr std::string_view kDeliveries = "/deliveries/";
constexpr std::string_view kSheet = "/sheet";

constexpr std::string_view kSheetStyle = "/sheet.css";
constexpr std::string_view kReopen = "/reopen";

Answer wrongMethod(const std::string &method, const std::string &allowed) {
  Answer answer = textAnswer(405, "this page does not answer " + method);
  answer.allow = allowed;
  return answer;
}

/// Cuts the ending off, if the path has it. Returns true then.
bool cutOff(std::string_view &path, std::string_view ending) {
  const bool hasEnding = path.ends_with(ending);
  path.remove_suffix(hasEnding ? ending.size() : 0);
  return hasEnding;
}

}  // namespace

bool SupervisorPages::isReopening(std::string_view path) {
  return path.starts_with(kDeliveries) && path.ends_with(kReopen);
}

std::optional<Answer> SupervisorPages::answer(const Request &request) const {
  std::string_view path(request.target);
  path = path.substr(0, path.find('?'));
  const bool isList = path == "/";
  if (!isList && !path.starts_with(kDeliveries)) {
    return std::nullopt;
  }
  path.remove_prefix(isList ? 1 : kDeliveries.size());
  const bool isReopening = !isList && m_canReopen && cutOff(path, kReopen);
  const bool isStyle = !isList && cutOff(path, kSheetStyle);
  const bool isSheet = !isReopening && !isStyle && cutOff(path, kSheet);
  if (path.find('/') != std::string_view::npos) {
    return std::nullopt;
  }
  if (isReopening) {
    return request.method == "POST" ? reopen(path) : wrongMethod(request.method, "POST");
  }
  if (request.method != "GET" && request.method != "HEAD") {
    return wrongMethod(request.method, "GET, HEAD");
  }
  if (isStyle) {
    return deliverySheetStyle(percentDecoded(path).value_or(""));
  }
  return isList ? list(request.target) : delivery(path, isSheet);
}

Answer SupervisorPages::list(const std::string &target) const {
  const std::string search = queryParameter(target, "q");
  return deliveryListPage(m_store.summaries(search), search, m_canReopen);
}

Answer SupervisorPages::delivery(std::string_view encodedNumber, bool isSheet) const {
  const std::optional<std::string> number = percentDecoded(encodedNumber);
  if (!number || !isStorable(*number)) {
    return unknownDeliveryPage(std::string(encodedNumber));
  }
  const std::vector<OrderLine> lines = m_store.delivery(*number).lines;
  std::vector<ReceivedReport> facts = m_store.picked({.delivery = *number});
  if (lines.empty() && facts.empty()) {
    return unknownDeliveryPage(*number);
  }
  const PickedDelivery picked = pickedDelivery(lines, std::move(facts));
  if (isSheet) {
    return deliverySheet(*number, lines, picked);
  }
  return deliveryPage(*number, lines, picked,
                      {.reopenings = m_store.reopenings(*number),
                       .unknownArticles = m_store.unknownArticles(*number),
                       .canReopen = m_canReopen});
}

Answer SupervisorPages::reopen(std::string_view encodedNumber) const {
  const std::optional<std::string> number = percentDecoded(encodedNumber);
  if (!number || !isStorable(*number)) {
    return unknownDeliveryPage(std::string(encodedNumber));
  }
  // One that is open already is shown as it is.
  static_cast<void>(m_store.reopen(*number));
  return {.status = 303,
          .contentType = "text/html; charset=utf-8",
          .body = {},
          .headers = {{"Location", std::string(kDeliveries) + percentEncoded(*number)}}};
}

}  // namespace cartonpick::orders
