#include "files/delivery_file.h"

#include "sample_data.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

TEST(DeliveryFile, IsCsvByItsName) {
  const TemporaryFolder folder;
  const auto file =
      folder.write("a.csv",
                   "doc,ordernum,cusname,brand,cdate,date,carton,item,barcode,descr,qty\n"
                   "D1,SO,A,B,01/31/2026,02/28/2026,C,I,E,X,3\n");
  EXPECT_EQ(readDeliveryFile(file).lines("D1").size(), 1U);
}

TEST(DeliveryFile, IsJsonUnderAnyOtherName) {
  const TemporaryFolder folder;
  const auto file = folder.write("a.txt", nlohmann::json::array({orderLineJson()}).dump());
  EXPECT_EQ(readDeliveryFile(file).lines("D1").size(), 1U);
}

TEST(DeliveryFile, IsNamedInErrors) {
  const TemporaryFolder folder;
  const auto file = folder.write("a.csv", "doc\n");
  EXPECT_EQ(errorOf([&] { readDeliveryFile(file); }),
            file + ": line 1: column \"cusname\" is missing");
}

TEST(DeliveryFile, MustBeThere) {
  const TemporaryFolder folder;
  const auto missing = folder.path("missing.json");
  EXPECT_EQ(errorOf([&] { readDeliveryFile(missing); }), missing + ": the file can't be read");
}

TEST(DeliveryFile, MayNotBeAFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(errorOf([&] { readDeliveryFile(folder.path("")); }),
            folder.path("") + ": the file can't be read");
}

}  // namespace cartonpick::orders
