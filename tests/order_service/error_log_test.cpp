#include "error_log.h"

#include <gtest/gtest.h>
#include <sstream>

namespace cartonpick::orders {

TEST(ErrorLog, WritesALineForEachErrorButNotForItsRepetitions) {
  std::ostringstream out;
  ErrorLog log(out);
  log.write("the disk is full");
  log.write("the disk is full");
  log.write("the database is away");
  EXPECT_EQ(out.str(),
            "cartonpick-orders: the disk is full\ncartonpick-orders: the database is away\n");
}

}  // namespace cartonpick::orders
