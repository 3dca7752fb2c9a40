#include "store/case_folding.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

TEST(CaseFolding, MakesUpperAndLowerCaseEqual) {
  EXPECT_EQ(caseFolded("Rosie's KITCHEN 7"), "rosie's kitchen 7");
  EXPECT_EQ(caseFolded("Straße"), "strasse");
  EXPECT_EQ(caseFolded("ΣΊΣΥΦΟΣ"), caseFolded("σίσυφος"));
  EXPECT_EQ(caseFolded(""), "");
}

TEST(CaseFolding, DoesNotDependOnALanguage) {
  EXPECT_EQ(caseFolded("I"), "i");
  EXPECT_EQ(caseFolded("ı"), "ı");
}

TEST(CaseFolding, LeavesAccentsAsTheyAre) {
  EXPECT_NE(caseFolded("É"), caseFolded("E"));
}

}  // namespace cartonpick::orders
