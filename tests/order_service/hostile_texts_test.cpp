// Texts that try to become markup on the supervisor's pages. What they are made of decides nothing:
// a page of them has the elements and attributes of a page of harmless ones.

#include "pages/html.h"
#include "pages/supervisor_pages.h"
#include "sample_data.h"

#include <gtest/gtest.h>
#include <regex>

namespace cartonpick::orders {

namespace {

/// The tags of a page, their attributes without values, and nothing of what stands between them.
std::string skeletonOf(const std::string &page) {
  static const std::regex kValue("=\"[^\"<>]*\"");
  static const std::regex kBetween(">[^<]*<");
  static const std::regex kCode("<(style|script)([^>]*)>[\\s\\S]*?</\\1>");
  const std::string plain = std::regex_replace(page, kCode, "<$1$2></$1>");
  return std::regex_replace(std::regex_replace(plain, kValue, "=\"\""), kBetween, "><");
}

/// The pages of a store in which every text is `text`.
class Pages {
 public:
  explicit Pages(const std::string &text) : m_text(text) {
    OrderLine line = orderLine();
    line.customer = line.brand = line.delivery = line.order = line.carton = text;
    line.article = {text, text, text};
    OrderLine other = line;
    other.order += "x";
    m_store.load({{line, other}, {}});
    PickReport picked = pickReport();
    picked.delivery = picked.order = picked.box = picked.item = picked.barcode = text;
    PickReport unordered = picked;
    unordered.box += "x";
    m_store.store({picked, unordered});
  }

  std::vector<std::string> all() const {
    const std::string encoded = percentEncoded(m_text);
    return {page("/"),
            page("/?q=" + encoded),
            page("/?q=x" + encoded),
            page("/deliveries/" + encoded),
            page("/deliveries/" + encoded + "/sheet"),
            page("/deliveries/x" + encoded)};
  }

 private:
  std::string page(const std::string &target) const {
    return m_pages.answer({.method = "GET", .target = target, .contentType = {}, .body = {}})
        .value()
        .body;
  }

  std::string m_text;
  SqlStore m_store{SqlAddress(SqlAddress::kInMemory)};
  SupervisorPages m_pages{m_store};
};

}  // namespace

TEST(HostileTexts, AreTextOnEveryPage) {
  const std::vector<std::string> harmless = Pages("harmless").all();
  for (const std::string &text : {
           std::string("<b>bold</b>"),
           std::string("<img src=http://evil.example/x onerror=alert(1)>"),
           std::string("<script>alert(1)</script>"),
           std::string("\"><script>alert(1)</script>"),
           std::string("' onmouseover='alert(1)"),
           std::string("\" onmouseover=\"alert(1)"),
           std::string("&lt;b&gt;"),
           std::string("<a href=\"javascript:alert(1)\">x</a>"),
           std::string("</title><b>"),
           std::string("--><b>"),
           std::string("javascript:alert(1)"),
           std::string("//evil.example/"),
           std::string("{{7*7}}${7*7}"),
       }) {
    const std::vector<std::string> pages = Pages(text).all();
    for (std::size_t i = 0; i < pages.size(); ++i) {
      EXPECT_EQ(skeletonOf(pages[i]), skeletonOf(harmless[i])) << text << " on page " << i;
      EXPECT_NE(pages[i].find(escaped(text)), std::string::npos) << text << " on page " << i;
    }
  }
}

TEST(HostileTexts, WouldBeFoundIfTheyWereMarkup) {
  const std::string page = "<p title=\"x\">text</p>";
  EXPECT_EQ(skeletonOf(page), skeletonOf("<p title=\"other\">other</p>"));
  EXPECT_NE(skeletonOf(page), skeletonOf("<p title=\"x\"><b>text</b></p>"));
  EXPECT_NE(skeletonOf(page), skeletonOf("<p title=\"\" onclick=\"x\">text</p>"));
}

}  // namespace cartonpick::orders
