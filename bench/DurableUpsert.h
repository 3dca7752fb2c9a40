#pragma once

#include "BareSqlite.h"
#include "BenchStore.h"

#include <QSqlDatabase>
#include <QSqlQuery>

#include <memory>
#include <string>

// The simplest ways to store a picked quantity of the delivery "4711": one statement on the
// program's table, durable when the call returns. All throw std::runtime_error if that fails.

/// Uses the C API of SQLite.
class BareUpsert {
 public:
  BareUpsert();
  void operator()(const std::string &item, int quantity);

 private:
  BenchStore m_store;
  BareSqlite m_database;
  BareSqlite::Statement m_upsert;
};

/// Uses Qt SQL. Only one object can exist at a time.
class QtUpsert {
 public:
  QtUpsert();
  ~QtUpsert();
  QtUpsert(const QtUpsert &) = delete;
  QtUpsert &operator=(const QtUpsert &) = delete;
  void operator()(const std::string &item, int quantity);

 private:
  BenchStore m_store;
  QSqlDatabase m_database;
  QSqlQuery m_upsert;
};
