#include "store/sql_address.h"

#include "sample_data.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

TEST(SqlAddress, IsAFileOrAUrlOfPostgres) {
  for (const std::string file : {"orders.sqlite", "/var/lib/a b=c.db", ":memory:", "file:x?y=1"}) {
    EXPECT_EQ(SqlAddress(file).dialect(), SqlDialect::Sqlite) << file;
    EXPECT_EQ(SqlAddress(file).shown(), file);
  }
  for (const std::string url : {"postgresql://db/picking", "postgres://db/picking"}) {
    EXPECT_EQ(SqlAddress(url).dialect(), SqlDialect::Postgres) << url;
    EXPECT_EQ(SqlAddress(url).shown(), "postgresql://db/picking");
  }
}

TEST(SqlAddress, ShowsHostsPortsAndDatabaseAlone) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"postgresql://me:secret@a:1,b:2/picking", "postgresql://a:1,b:2/picking"},
      {"postgresql://db/picking?user=me&password=secret", "postgresql://db/picking"},
      {"postgresql:///picking?password=secret&host=/run/x", "postgresql:///picking?host=/run/x"},
      {"postgresql://me:s%40%2Fcret@db?sslpassword=secret", "postgresql://db/"},
      {"postgresql://db/picking?host=a,b&port=5433", "postgresql://a:5433,b:5433/picking"},
      {"postgresql://me:se?cret@db/picking", "postgresql://db/picking"},
  };
  for (const auto &[url, shown] : cases) {
    EXPECT_EQ(SqlAddress(url).shown(), shown) << url;
  }
}

TEST(SqlAddress, QuotesNothingOfAnAddressThatItRefuses) {
  for (const std::string address : {
           "postgresql://me:p@secret@db/picking",
           "postgresql://me:secret/p@db/picking",
           "postgresql://me:12/secret@db/picking",
           "postgresql://me/x:secret@db/picking",
           "postgresql://db/picking?pasword=secret",
           "postgresql://db/picking?secret",
           "postgresql://me:sec%ret@db/picking",
           "postgresq://me:secret@db/picking",
           "mysql://me:secret@db/picking",
           "host=db user=me password=secret",
       }) {
    const std::string error = errorOf([&] { const SqlAddress parsed(address); });
    EXPECT_TRUE(error.starts_with("the store")) << address << ": " << error;
    EXPECT_EQ(error.find("secret"), std::string::npos) << error;
    EXPECT_EQ(error.find("ret"), std::string::npos) << error;
  }
}

TEST(SqlAddress, TakesSecretsOutOfMessages) {
  const SqlAddress address("postgresql://me:s%C3%A9cret@db/picking?sslpassword=other");
  EXPECT_EQ(address.withoutSecrets("sécret, other, sécret of me"), "***, ***, *** of me");
}

}  // namespace cartonpick::orders
