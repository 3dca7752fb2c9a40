#include "pages/delivery_list_page.h"

#include "pages/html.h"
#include "pages/html_page.h"

namespace cartonpick::orders {

namespace {

std::string searchForm(const std::string &search) {
  return "<form role=\"search\"><div><label for=\"q\">Delivery number or customer</label>\n"
         "<input type=\"search\" id=\"q\" name=\"q\" autocomplete=\"off\" value=\"" +
         escaped(search) + "\"></div>\n<button>Search</button></form>\n";
}

std::string captionOf(std::size_t count, const std::string &search) {
  const std::string which = search.empty() ? "" : " found for “" + escaped(search) + "”";
  return count == kMaxSummaries
             ? "The " + std::to_string(count) + " deliveries" + which + " that changed last"
             : counted(count, "delivery", "deliveries") + which + ", the last change first";
}

std::string figureCell(const std::string &label, std::int64_t number) {
  return R"(<td class="figure" data-label=")" + label + "\">" + figure(number) + "</td>";
}

std::string rowOf(const DeliverySummary &delivery) {
  return R"(<tr><th scope="row"><a href="/deliveries/)" + percentEncoded(delivery.number) + "\">" +
         escaped(delivery.number) + "</a></th><td class=\"text wide\">" +
         escaped(delivery.customer) + "</td>" + figureCell("Boxes", delivery.boxes) +
         figureCell("Ordered", delivery.ordered) + figureCell("Picked", delivery.picked) +
         "<td data-label=\"Sent\">" + timeElement(delivery.sentAt) +
         "</td><td class=\"state-cell\">" + stateElement(delivery.state) + "</td></tr>\n";
}

std::string tableOf(const std::vector<DeliverySummary> &deliveries, const std::string &search) {
  std::string table =
      "<table><caption>" + captionOf(deliveries.size(), search) +
      "</caption>\n<thead><tr><th scope=\"col\">Delivery</th><th scope=\"col\">Customer</th>"
      "<th scope=\"col\" class=\"figure\">Boxes</th>"
      "<th scope=\"col\" class=\"figure\">Ordered</th>"
      "<th scope=\"col\" class=\"figure\">Picked</th><th scope=\"col\">Sent</th>"
      "<th scope=\"col\">State</th></tr></thead>\n<tbody>\n";
  for (const DeliverySummary &delivery : deliveries) {
    table += rowOf(delivery);
  }
  return table + "</tbody></table>\n";
}

std::string contentOf(const std::vector<DeliverySummary> &deliveries, const std::string &search) {
  if (!deliveries.empty()) {
    return tableOf(deliveries, search);
  }
  return search.empty() ? "<p class=\"none\">There are no deliveries yet.</p>\n"
                        : "<p class=\"none\">No delivery has a number that starts with “" +
                              escaped(search) + "” or a customer with that in the name.</p>\n";
}

}  // namespace

Answer deliveryListPage(const std::vector<DeliverySummary> &deliveries, const std::string &search,
                        bool hasLogin) {
  const std::string logout =
      hasLogin ? "<form method=\"post\" action=\"/logout\"><button>Log out</button></form>\n" : "";
  const std::string all = search.empty() ? "" : "<p><a href=\"/\">All deliveries</a></p>\n";
  return htmlAnswer(200, PageKind::Live, "Deliveries",
                    barElement() +
                        "<main>\n<div class=\"head\">"
                        "<h1>Deliveries</h1>\n" +
                        searchForm(search) + logout + "</div>\n" + all + updatedParagraph() +
                        R"(<div class="card" id="deliveries" data-live>)" +
                        contentOf(deliveries, search) + "</div>\n</main>\n");
}

}  // namespace cartonpick::orders
