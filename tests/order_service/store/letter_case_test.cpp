#include "store/letter_case.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

using Variants = std::vector<std::string>;

TEST(LetterCase, HasOneVariantOfAsciiAlone) {
  EXPECT_EQ(caseVariants("Rosie's KITCHEN 7"), Variants{"rosie's kitchen 7"});
}

TEST(LetterCase, HasEveryUsualVariantOfOtherLetters) {
  EXPECT_EQ(caseVariants("söhne"), (Variants{"söhne", "sÖhne"}));
  EXPECT_EQ(caseVariants("ΑΦΟΙ λΆΖΑΡΗ"),
            (Variants{"ΑΦΟΙ λΆΖΑΡΗ", "αφοι λάζαρη", "ΑΦΟΙ ΛΆΖΑΡΗ", "Αφοι Λάζαρη"}));
}

}  // namespace cartonpick::orders
