#include "pages/order_heads.h"

#include "model/calendar.h"
#include "pages/html.h"

#include <algorithm>

namespace cartonpick::orders {

namespace {

std::string orderText(const OrderLine &line) {
  return escaped(line.order) + ", ordered " + escaped(isoDate(line.orderDate)) +
         ", to be shipped " + escaped(isoDate(line.shippingDate));
}

/// Every text that lines have, once, in the order of the lines.
template <class TextOf>
std::string definition(const std::string &term, const std::vector<OrderLine> &lines,
                       const std::string &separator, const TextOf &textOf) {
  std::vector<std::string> texts;
  std::string html;
  for (const OrderLine &line : lines) {
    const std::string text = textOf(line);
    if (std::find(texts.begin(), texts.end(), text) == texts.end()) {
      html += (texts.empty() ? "" : separator) + text;
      texts.push_back(text);
    }
  }
  return "<div><dt>" + term + "</dt><dd>" + html + "</dd></div>\n";
}

}  // namespace

std::string orderHeads(const std::vector<OrderLine> &lines) {
  return definition("Customer", lines, ", ",
                    [](const OrderLine &line) { return escaped(line.customer); }) +
         definition("Brand", lines, ", ",
                    [](const OrderLine &line) { return escaped(line.brand); }) +
         definition("Order", lines, "<br>", orderText);
}

}  // namespace cartonpick::orders
