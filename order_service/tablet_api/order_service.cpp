#include "tablet_api/order_service.h"

#include "http/percent_decoding.h"
#include "json/order_json.h"
#include "model/input_error.h"
#include "model/stored_text.h"
#include "tablet_api/picking_body.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <utility>

namespace cartonpick::orders {

namespace {

constexpr std::string_view kOrderPerCarton = "getorderpercarton/";
constexpr std::string_view kItems = "getitems";
constexpr std::string_view kSendPick = "sendpick";

constexpr auto kAlreadySent = "\"This picking has already been sent to the server\"";
constexpr auto kAccepted = "\"0\"";

Answer jsonAnswer(std::string json) {
  return {.contentType = "application/json; charset=utf-8", .body = std::move(json)};
}

Answer notFound() {
  return textAnswer(404, "there is no such call");
}

Answer wrongMethod(const std::string &method, const std::string &allowed) {
  Answer answer = textAnswer(405, "this call does not answer " + method + ", only " + allowed);
  answer.allow = allowed;
  return answer;
}

/// What follows the service's path prefix, without the query; nothing when the prefix is another.
std::optional<std::string_view> callOf(std::string_view target) {
  const std::string_view path = target.substr(0, target.find('?'));
  return path.starts_with(OrderService::kPrefix)
             ? std::optional(path.substr(OrderService::kPrefix.size()))
             : std::nullopt;
}

bool isOrderPerCarton(std::string_view call) {
  return call.starts_with(kOrderPerCarton) &&
         call.find('/', kOrderPerCarton.size()) == std::string_view::npos;
}

bool isRead(const std::string &method) {
  return method == "GET" || method == "HEAD";
}

/// The media type without its parameters, in lower case.
std::string mediaType(std::string_view contentType) {
  std::string type(contentType.substr(0, contentType.find_first_of("; \t")));
  std::transform(type.begin(), type.end(), type.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return type;
}

void checkContentType(const std::string &contentType) {
  if (mediaType(contentType) != "application/json") {
    throw InputError("the Content-Type must be application/json, not \"" + contentType + '"');
  }
}

}  // namespace

Answer OrderService::answer(const Request &request) const {
  const std::optional<std::string_view> call = callOf(request.target);
  if (!call) {
    return notFound();
  }
  if (*call == kSendPick) {
    return request.method == "POST" ? sendPick(request) : wrongMethod(request.method, "POST");
  }
  if (*call != kItems && !isOrderPerCarton(*call)) {
    return notFound();
  }
  if (!isRead(request.method)) {
    return wrongMethod(request.method, "GET, HEAD");
  }
  return *call == kItems ? items() : orderPerCarton(call->substr(kOrderPerCarton.size()));
}

Answer OrderService::orderPerCarton(std::string_view encodedNumber) const {
  const std::optional<std::string> number = percentDecoded(encodedNumber);
  if (!number) {
    return textAnswer(400, "a % in the delivery number is not followed by two hex digits");
  }
  // No delivery has a number that is not a text, and the databases do not answer alike to one.
  const Delivery delivery = isStorable(*number) ? m_store.delivery(*number) : Delivery();
  return delivery.isSent ? jsonAnswer(kAlreadySent) : jsonAnswer(toJson(delivery.lines));
}

Answer OrderService::items() const {
  return jsonAnswer(toJson(m_store.catalogue()));
}

Answer OrderService::sendPick(const Request &request) const {
  if (!request.origin.empty()) {
    // The page may be of another network, in a browser of this one.
    return textAnswer(403, "a picking is not taken from a web page");
  }
  std::vector<PickReport> lines;
  try {
    checkContentType(request.contentType);
    lines = readPickingBody(request.body);
  } catch (const InputError &error) {
    return textAnswer(400, error.what());
  }
  const std::string &delivery = lines.front().delivery;
  if (m_store.delivery(delivery).lines.empty()) {
    return textAnswer(400, "line 1: delivery \"" + delivery + "\" is unknown");
  }
  m_store.store(lines);
  return jsonAnswer(kAccepted);
}

}  // namespace cartonpick::orders
