#include "pages/delivery_sheet.h"

#include "pages/barcodes.h"
#include "pages/html.h"
#include "pages/html_page.h"
#include "pages/order_heads.h"

#include <cctype>
#include <sstream>
#include <string_view>

namespace cartonpick::orders {

namespace {

/// The barcode, if there can be one, over its text.
std::string figureOf(const std::string &barcode, const std::string &text) {
  return "<figure class=\"code\">" + barcode + "<figcaption>" + escaped(text) +
         "</figcaption></figure>";
}

std::string itemOf(const LineFulfilment &line) {
  return "<li><div class=\"pieces\">" + figure(line.ordered) + " ×</div><div class=\"what\"><b>" +
         escaped(line.article.item) + "</b><span>" + escaped(line.article.description) +
         "</span></div>" + figureOf(articleBarcode(line.article.barcode), line.article.barcode) +
         "</li>\n";
}

/// The text as a string of CSS; all but letters and digits by number, so that nothing ends it.
std::string cssString(std::string_view text) {
  std::ostringstream string;
  string << '"' << std::hex;
  for (const char c : text) {
    if (static_cast<unsigned char>(c) < 0x80 && std::isalnum(static_cast<unsigned char>(c)) == 0) {
      string << '\\' << static_cast<int>(c) << ' ';
    } else {
      string << c;
    }
  }
  string << '"';
  return string.str();
}

/// Nothing for a box of which nothing was ordered.
std::string sectionOf(const PickedBox &box) {
  std::string items;
  for (const LineFulfilment &line : box.lines) {
    items += line.isOrdered ? itemOf(line) : std::string();
  }
  return items.empty() ? items
                       : "<section><div class=\"box-head\"><h2>Box " + escaped(box.name) + "</h2>" +
                             figureOf(code128(box.name), box.name) + "</div>\n<ul>\n" + items +
                             "</ul></section>\n";
}

}  // namespace

Answer deliverySheet(const std::string &number, const std::vector<OrderLine> &lines,
                     const PickedDelivery &delivery) {
  const std::string path = "/deliveries/" + percentEncoded(number);
  std::string body = "<nav><a href=\"" + path + "\">← Delivery " + escaped(number) +
                     "</a></nav>\n<main>\n<header><div class=\"what\"><h1>Delivery " +
                     escaped(number) + "</h1>\n<dl>" + orderHeads(lines) + "</dl></div>" +
                     figureOf(code128(number), number) + "</header>\n";
  for (const PickedBox &box : delivery.boxes) {
    body += sectionOf(box);
  }
  return htmlAnswer(200, PageKind::Sheet, "Sheet of delivery " + number, body + "</main>\n",
                    path + "/sheet.css");
}

Answer deliverySheetStyle(const std::string &number) {
  return {.contentType = "text/css; charset=utf-8",
          .body = "@page { @bottom-left { content: " + cssString("Delivery " + number) +
                  "; font: 9pt sans-serif; } }\n"};
}

}  // namespace cartonpick::orders
