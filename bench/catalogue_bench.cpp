#include "BareSqlite.h"
#include "BenchStore.h"
#include "ProgramWork.h"
#include "SampleData.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <benchmark/benchmark.h>
#include <map>
#include <simdjson.h>
#include <stdexcept>

// A catalogue download: from the body in memory to the committed and indexed table.
namespace {

constexpr auto kInsert = "INSERT INTO Items (item, barcode, descr) VALUES (?, ?, ?)";

const QByteArray &bodyOf(std::size_t articles) {
  static std::map<std::size_t, QByteArray> bodies;
  QByteArray &body = bodies[articles];
  if (body.isEmpty()) {
    body = sample::catalogueJson(articles);
  }
  return body;
}

void storeBare(const QByteArray &body, const QString &path) {
  const BareSqlite database(path);
  const simdjson::padded_string text(body.constData(), static_cast<std::size_t>(body.size()));
  database.run(
      "BEGIN IMMEDIATE; DROP INDEX Items_item; DROP INDEX Items_barcode; "
      "DELETE FROM Items");
  BareSqlite::Statement insert(database, kInsert);
  simdjson::ondemand::parser parser;
  auto document = parser.iterate(text);
  for (simdjson::ondemand::object article : document.get_array()) {
    const std::string_view item = article["item"];
    const std::string_view barcode = article["barcode"];
    const std::string_view descr = article["descr"];
    insert.bind(1, item);
    insert.bind(2, barcode);
    insert.bind(3, descr);
    insert.step();
    insert.reset();
  }
  database.run(
      "CREATE INDEX Items_item ON Items (item); "
      "CREATE INDEX Items_barcode ON Items (barcode); COMMIT");
}

void storeWithQt(const QByteArray &body, const QString &path) {
  {
    QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "bench");
    database.setDatabaseName(path);
    if (!database.open()) {
      throw std::runtime_error("Qt cannot open the store");
    }
    QSqlQuery query(database);
    query.exec("PRAGMA synchronous = FULL");
    database.transaction();
    query.exec("DELETE FROM Items");
    query.prepare(kInsert);
    const QJsonArray articles = QJsonDocument::fromJson(body).array();
    for (const auto &value : articles) {
      const QJsonObject article = value.toObject();
      query.bindValue(0, article["item"].toString());
      query.bindValue(1, article["barcode"].toString());
      query.bindValue(2, article["descr"].toString());
      query.exec();
    }
    query.finish();
    database.commit();
  }
  QSqlDatabase::removeDatabase("bench");
}

/// Parses the body with SQLite's JSON functions.
void storeWithJsonEach(const QByteArray &body, const QString &path) {
  const BareSqlite database(path);
  database.run("BEGIN IMMEDIATE; DELETE FROM Items");
  BareSqlite::Statement insert(database,
                               "INSERT INTO Items (item, barcode, descr) SELECT value ->> 'item', "
                               "value ->> 'barcode', value ->> 'descr' FROM json_each(?)");
  insert.bind(1, std::string_view(body.constData(), static_cast<std::size_t>(body.size())));
  insert.step();
  insert.reset();
  database.run("COMMIT");
}

/// Returns a hash of the stored catalogue.
std::int64_t digest(const QString &path) {
  const BareSqlite database(path);
  BareSqlite::Statement query(database, "SELECT item, barcode, descr FROM Items ORDER BY rowid");
  std::size_t digest = 0;
  while (query.step()) {
    for (int column = 0; column < 3; ++column) {
      digest = digest * 31 + std::hash<std::string_view>()(query.text(column));
    }
  }
  return static_cast<std::int64_t>(digest);
}

template <void Store(const QByteArray &, const QString &)>
void catalogue(benchmark::State &state) {
  const auto articles = static_cast<std::size_t>(state.range(0));
  const QByteArray &body = bodyOf(articles);
  const BenchStore store;
  for (auto _ : state) {
    Store(body, store.path());
  }
  const BenchStore plain;
  storeBare(body, plain.path());
  if (digest(store.path()) != digest(plain.path())) {
    state.SkipWithError("another catalogue than the plain way's");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

#define CATALOGUE(store, name)        \
  BENCHMARK(catalogue<store>)         \
      ->Name("catalogue/" name)       \
      ->RangeMultiplier(10)           \
      ->Range(1'000, 1'000'000)       \
      ->Unit(benchmark::kMillisecond) \
      ->MeasureProcessCPUTime()       \
      ->UseRealTime()

CATALOGUE(storeBare, "floor: simdjson and SQLite's C API, one thread");
CATALOGUE(program::storeCatalogue, "CartonPick");
CATALOGUE(storeWithJsonEach, "peer: SQLite's json_each");
CATALOGUE(storeWithQt, "peer: QJsonDocument and Qt SQL");

}  // namespace
