#include "http/percent_decoding.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

TEST(PercentDecoding, LeavesOrdinaryCharactersAlone) {
  EXPECT_EQ(percentDecoded("4711"), "4711");
  EXPECT_EQ(percentDecoded(""), "");
  EXPECT_EQ(percentDecoded("a+b"), "a+b");
}

TEST(PercentDecoding, DecodesBytesInEitherCase) {
  EXPECT_EQ(percentDecoded("a%20b%2Fc%2f"), "a b/c/");
  EXPECT_EQ(percentDecoded("%C3%9f"), "ß");
  EXPECT_EQ(percentDecoded("%2541"), "%41");
}

TEST(PercentDecoding, RefusesAPercentSignWithoutTwoHexDigits) {
  EXPECT_EQ(percentDecoded("%"), std::nullopt);
  EXPECT_EQ(percentDecoded("1%2"), std::nullopt);
  EXPECT_EQ(percentDecoded("%zz"), std::nullopt);
  EXPECT_EQ(percentDecoded("%2g"), std::nullopt);
  EXPECT_EQ(percentDecoded("%-1"), std::nullopt);
  EXPECT_EQ(percentDecoded("% 1"), std::nullopt);
}

}  // namespace cartonpick::orders
