#include "model/ean13.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

TEST(Ean13, EndsInItsCheckDigit) {
  EXPECT_EQ(ean13("400638133393"), "4006381333931");
  EXPECT_EQ(ean13("590123412345"), "5901234123457");
}

TEST(Ean13, HasCheckDigitZeroWhenTheSumIsAMultipleOfTen) {
  EXPECT_EQ(ean13CheckDigit("000000000000"), '0');
  EXPECT_EQ(ean13CheckDigit("501274610000"), '0');
}

}  // namespace cartonpick::orders
