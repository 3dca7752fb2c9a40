#include "pages/barcodes.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

bool has(const std::string &text, const std::string &part) {
  return text.find(part) != std::string::npos;
}

}  // namespace

// That scanners read them is for the supervisor_page_test to show.

TEST(Barcodes, MakeAnEan13OfAnArticleCodeThatIsOne) {
  const std::string svg = articleBarcode("5012746100000");
  EXPECT_TRUE(has(svg, "aria-label=\"EAN-13 5012746100000\"")) << svg;
  // 95 modules between quiet zones of 11 and 7; it starts with two guard bars.
  EXPECT_TRUE(has(svg, "width=\"113em\"")) << svg;
  EXPECT_TRUE(has(svg, "d=\"M11 0h1v1h-1zM13 0h1v1h-1z")) << svg;
  EXPECT_TRUE(has(svg, "M105 0h1v1h-1z\"")) << svg;
}

TEST(Barcodes, MakeCode128OfAnyOtherArticleCode) {
  for (const std::string code :
       {"5012746100001", "501274610000", "50127461000000", "501274610000O"}) {
    EXPECT_TRUE(has(articleBarcode(code), "aria-label=\"Code 128 " + code + '"')) << code;
  }
}

TEST(Barcodes, HoldDigitsInPairs) {
  // Start, two pairs, check and a stop of 13 modules, between quiet zones of 10.
  EXPECT_TRUE(has(code128("4711"), "width=\"77em\"")) << code128("4711");
}

TEST(Barcodes, HoldAllPrintableAscii) {
  std::string first;
  std::string second;
  for (char c = ' '; c < 'P'; ++c) {
    first += c;
    second += static_cast<char>(c + 'O' - ' ');
  }
  EXPECT_TRUE(has(code128(first), "<path d=\"M10 "));
  EXPECT_TRUE(has(code128(second), "<path d=\"M10 "));
}

TEST(Barcodes, AreLeftOutWhereCode128CantHoldTheText) {
  for (const std::string text : {"", "Größe", "Ω", "tab\t", "del\x7f"}) {
    EXPECT_EQ(code128(text), "") << text;
  }
  EXPECT_NE(code128(std::string(60, 'x')), "");
  EXPECT_EQ(code128(std::string(61, 'x')), "");
}

TEST(Barcodes, AreNamedByTheirTextAsItIs) {
  EXPECT_TRUE(has(code128("<\"&"), "aria-label=\"Code 128 &lt;&quot;&amp;\""));
}

}  // namespace cartonpick::orders
