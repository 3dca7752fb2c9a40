#pragma once

#include "postgres_cluster.h"
#include "store/sql_address.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace cartonpick::orders {

/// The base of tests that run on an SQLite file and on PostgreSQL.
class EitherStoreTest : public testing::TestWithParam<SqlDialect> {
 protected:
  SqlAddress address() const {
    return SqlAddress(m_cluster ? m_cluster->url() : m_folder.path("store.sqlite"));
  }

 private:
  TemporaryFolder m_folder;
  std::unique_ptr<PostgresCluster> m_cluster =
      GetParam() == SqlDialect::Postgres ? std::make_unique<PostgresCluster>() : nullptr;
};

inline auto bothDialects() {
  return testing::Values(SqlDialect::Sqlite, SqlDialect::Postgres);
}

inline std::string dialectName(const testing::TestParamInfo<SqlDialect> &test) {
  return test.param == SqlDialect::Sqlite ? "Sqlite" : "Postgres";
}

}  // namespace cartonpick::orders
