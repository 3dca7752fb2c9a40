#include "pages/delivery_page.h"

#include "pages/html.h"
#include "pages/html_page.h"
#include "pages/order_heads.h"

#include <algorithm>

namespace cartonpick::orders {

namespace {

struct Sums {
  std::int64_t ordered = 0;
  std::int64_t picked = 0;
};

Sums sumsOf(const std::vector<PickedBox> &boxes) {
  Sums sums;
  for (const PickedBox &box : boxes) {
    for (const LineFulfilment &line : box.lines) {
      sums.ordered += line.ordered;
      sums.picked += line.picked();
    }
  }
  return sums;
}

/// A line that was not picked at all is not short.
std::string differenceClass(std::int64_t difference, DeliveryState state) {
  if (difference == 0 || state == DeliveryState::Open) {
    return "figure";
  }
  return difference < 0 ? "figure less" : "figure more";
}

/// The quantities that were reported before others took their place.
std::string formerQuantities(const LineFulfilment &line) {
  std::string former;
  for (std::size_t i = 0; i + 1 < line.reports.size(); ++i) {
    if (line.reports[i] != line.reports[i + 1]) {
      former += (former.empty() ? "was " : ", then ") + figure(line.reports[i]);
    }
  }
  for (const std::int32_t quantity : line.undone) {
    former += (former.empty() ? "undone " : ", undone ") + figure(quantity);
  }
  return former.empty() ? former : " <span class=\"note\">" + former + "</span>";
}

std::string mark(const std::string &words) {
  return "<span class=\"state yellow\">" + words + "</span>";
}

bool isUnknown(const LineFulfilment &line, const std::vector<Article> &unknown) {
  return std::any_of(unknown.begin(), unknown.end(), [&](const Article &article) {
    return article.item == line.article.item && article.barcode == line.article.barcode;
  });
}

/// What was ordered of the line, or why it can't be right.
std::string orderedCell(const LineFulfilment &line, const std::vector<Article> &unknown) {
  if (line.isOrdered) {
    return figure(line.ordered);
  }
  return mark("not ordered") + (isUnknown(line, unknown) ? ' ' + mark("unknown article") : "");
}

std::string rowOf(const LineFulfilment &line, DeliveryState state, bool hasOrderColumn,
                  const std::vector<Article> &unknown) {
  const std::string order =
      hasOrderColumn ? R"(<td class="text" data-label="Order">)" + escaped(line.order) + "</td>"
                     : std::string();
  const std::string excess =
      line.isOrdered && line.difference() > 0 ? ' ' + mark("more than ordered") : std::string();
  return "<tr><th scope=\"row\">" + escaped(line.article.item) + "</th><td class=\"text\">" +
         escaped(line.article.barcode) + "</td><td class=\"text wide\">" +
         escaped(line.article.description) + "</td>" + order +
         R"(<td class="figure" data-label="Ordered">)" + orderedCell(line, unknown) +
         R"(</td><td class="figure" data-label="Picked">)" + figure(line.picked()) + excess +
         formerQuantities(line) + "</td><td class=\"" + differenceClass(line.difference(), state) +
         R"(" data-label="Difference">)" + signedFigure(line.difference()) + "</td></tr>\n";
}

std::string sectionOf(const PickedBox &box, DeliveryState state, bool hasOrderColumn,
                      const std::vector<Article> &unknown) {
  const Sums sums = sumsOf({box});
  std::string html =
      R"(<section class="card lines"><div class="box-head"><h2>Box )" + escaped(box.name) +
      "</h2><p>" + figure(sums.picked) + " of " + figure(sums.ordered) +
      " picked</p></div>\n<table><caption class=\"visually-hidden\">Lines of box " +
      escaped(box.name) +
      "</caption>\n<thead><tr><th scope=\"col\">Item</th>"
      "<th scope=\"col\">Barcode</th><th scope=\"col\" class=\"wide\">Description</th>" +
      (hasOrderColumn ? "<th scope=\"col\">Order</th>" : "") +
      "<th scope=\"col\" class=\"figure\">Ordered</th>"
      "<th scope=\"col\" class=\"figure\">Picked</th>"
      "<th scope=\"col\" class=\"figure\">Difference</th></tr></thead>\n<tbody>\n";
  for (const LineFulfilment &line : box.lines) {
    html += rowOf(line, state, hasOrderColumn, unknown);
  }
  return html + "</tbody></table></section>\n";
}

bool hasSeveralOrders(const std::vector<PickedBox> &boxes) {
  const std::string &first = boxes.front().lines.front().order;
  return std::any_of(boxes.begin(), boxes.end(), [&](const PickedBox &box) {
    return std::any_of(box.lines.begin(), box.lines.end(),
                       [&](const LineFulfilment &line) { return line.order != first; });
  });
}

std::string figureTerm(const std::string &term, const std::string &number,
                       const std::string &classes = "figure") {
  return "<div><dt>" + term + "</dt><dd class=\"" + classes + "\">" + number + "</dd></div>\n";
}

std::string reopeningTerm(const std::vector<std::string> &reopenings) {
  std::string times;
  for (const std::string &time : reopenings) {
    times += (times.empty() ? "" : ", ") + timeElement(time);
  }
  return times.empty() ? times : "<div><dt>Reopened</dt><dd>" + times + "</dd></div>\n";
}

std::string stateTerms(const PickedDelivery &delivery, const DeliveryNotes &notes) {
  const Sums sums = sumsOf(delivery.boxes);
  const std::int64_t difference = sums.picked - sums.ordered;
  const std::string sentAt = timeElement(delivery.sentAt);
  return "<dl><div><dt>State</dt><dd>" + stateElement(delivery.state) + "</dd></div>\n" +
         (sentAt.empty() ? "" : "<div><dt>Sent</dt><dd>" + sentAt + "</dd></div>\n") +
         reopeningTerm(notes.reopenings) + figureTerm("Ordered", figure(sums.ordered)) +
         figureTerm("Picked", figure(sums.picked)) +
         figureTerm("Difference", signedFigure(difference),
                    differenceClass(difference, delivery.state)) +
         "</dl>\n";
}

std::string headOf(const std::string &heading, const std::string &link) {
  return barElement() +
         "<main>\n<nav><p><a href=\"/\">← All deliveries</a></p></nav>\n<div class=\"head\"><h1>" +
         escaped(heading) + "</h1>\n" + link + "</div>\n";
}

std::string sheetLink(const std::string &number) {
  return R"(<a class="button" href="/deliveries/)" + percentEncoded(number) +
         "/sheet\">Sheet to print</a>";
}

/// The button that undoes what was sent.
std::string reopenForm(const std::string &number) {
  return R"(<form method="post" action="/deliveries/)" + percentEncoded(number) +
         "/reopen\"><button>Reopen</button> <span class=\"note\">What was sent no longer counts, "
         "and "
         "the delivery can be picked again.</span></form>\n";
}

}  // namespace

Answer deliveryPage(const std::string &number, const std::vector<OrderLine> &lines,
                    const PickedDelivery &delivery, const DeliveryNotes &notes) {
  std::string body = headOf("Delivery " + number, sheetLink(number)) + updatedParagraph();
  body += R"(<div id="delivery" data-live><div class="card">)" + stateTerms(delivery, notes) +
          (lines.empty() ? "" : "<dl>" + orderHeads(lines) + "</dl>") + "</div>\n";
  const bool hasOrderColumn = hasSeveralOrders(delivery.boxes);
  for (const PickedBox &box : delivery.boxes) {
    body += sectionOf(box, delivery.state, hasOrderColumn, notes.unknownArticles);
  }
  body += "</div>\n";
  if (notes.canReopen && !delivery.sentAt.empty()) {
    body += reopenForm(number);
  }
  return htmlAnswer(200, PageKind::Live, "Delivery " + number, body + "</main>\n");
}

Answer unknownDeliveryPage(const std::string &number) {
  return messagePage(404, "Unknown delivery", "There is no delivery “" + number + "”.");
}

}  // namespace cartonpick::orders
