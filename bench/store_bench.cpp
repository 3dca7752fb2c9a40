#include "BareSqlite.h"
#include "BenchStore.h"
#include "ProgramWork.h"
#include "SampleData.h"
#include "store/CatalogueWriter.h"
#include "store/ManagedObjectContext.h"

#include <QDateTime>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <benchmark/benchmark.h>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// A scanned code that is not in the open box and therefore looked up in the catalogue.

constexpr std::size_t kLinesOfTheBox = 1'000;

void fillCatalogue(const BenchStore &store, std::size_t articles) {
  CatalogueWriter writer(store.path());
  for (std::size_t i = 0; i < articles; ++i) {
    writer.insert({.barcode = sample::barcode(i).toStdString(),
                   .item = sample::itemCode(i).toStdString(),
                   .descr = "A description"});
  }
  if (writer.save()) {
    throw std::runtime_error("the catalogue is not stored");
  }
}

const BenchStore &catalogueOf(std::size_t articles) {
  static std::map<std::size_t, BenchStore> stores;
  const auto [store, isNew] = stores.try_emplace(articles);
  if (isNew) {
    fillCatalogue(store->second, articles);
  }
  return store->second;
}

std::vector<BoxLine> boxLines() {
  std::vector<BoxLine> lines;
  for (std::size_t i = 0; i < kLinesOfTheBox; ++i) {
    lines.push_back({.barcode = QStringLiteral("40%1").arg(i, 11, 10, QLatin1Char('0')),
                     .item = QStringLiteral("L%1").arg(i)});
  }
  return lines;
}

/// Generates barcodes spread over the whole catalogue.
class Codes {
 public:
  explicit Codes(std::size_t articles) : m_articles(articles) {}
  QString next() {
    m_index = (m_index + 7'919) % m_articles;
    return sample::barcode(m_index);
  }

 private:
  std::size_t m_articles;
  std::size_t m_index = 0;
};

void scanOfTheProgram(benchmark::State &state) {
  const auto articles = static_cast<std::size_t>(state.range(0));
  const BenchStore &store = catalogueOf(articles);
  const CodePositions lines(boxLines());
  Codes codes(articles);
  for (auto _ : state) {
    const QString code = codes.next();
    const auto article = program::scan(lines, store.context(), code);
    if (!article || article->barcode != code) {
      state.SkipWithError("the wrong article");
    }
  }
}

template <const char *&Sql>
void bareLookup(benchmark::State &state) {
  const auto articles = static_cast<std::size_t>(state.range(0));
  const BareSqlite database(catalogueOf(articles).path());
  BareSqlite::Statement query(database, Sql);
  Codes codes(articles);
  for (auto _ : state) {
    const std::string code = codes.next().toStdString();
    query.bind(1, code);
    if (!query.step() || query.text(0) != code) {
      state.SkipWithError("the wrong article");
    }
    query.reset();
  }
}

const char *oneIndex = "SELECT barcode, item, descr FROM Items WHERE barcode = ?1";
const char *literally =
    "SELECT barcode, item, descr FROM Items WHERE item = ?1 OR barcode = ?1 ORDER BY rowid";

#define SCAN(function, name) \
  BENCHMARK(function)->Name("scan/" name)->RangeMultiplier(10)->Range(1'000, 1'000'000)

SCAN(bareLookup<oneIndex>, "floor: one prepared lookup");
SCAN(scanOfTheProgram, "CartonPick");
SCAN(bareLookup<literally>, "peer: the query with OR");

// The history of all deliveries.

constexpr std::size_t kPicksOfADelivery = 50;

const BenchStore &historyOf(std::size_t picks) {
  static std::map<std::size_t, BenchStore> stores;
  const auto [store, isNew] = stores.try_emplace(picks);
  if (isNew) {
    sample::storeHistory(store->second.context(), picks, picks / kPicksOfADelivery);
  }
  return store->second;
}

void historyOfTheProgram(benchmark::State &state) {
  const auto picks = static_cast<std::size_t>(state.range(0));
  const BenchStore &store = historyOf(picks);
  for (auto _ : state) {
    if (store.context().deliveryPickTimes()->size() != picks / kPicksOfADelivery) {
      state.SkipWithError("not every delivery");
    }
  }
}

void bareHistory(benchmark::State &state) {
  const BareSqlite database(historyOf(static_cast<std::size_t>(state.range(0))).path());
  BareSqlite::Statement query(database,
                              "SELECT doc, sent, min(datepicked), max(datepicked) FROM Picking "
                              "GROUP BY doc, sent ORDER BY doc");
  for (auto _ : state) {
    std::int64_t sum = 0;
    while (query.step()) {
      sum += query.number(2) + query.number(3) + query.number(1);
      benchmark::DoNotOptimize(query.text(0));
    }
    query.reset();
    benchmark::DoNotOptimize(sum);
  }
}

QString textOf(SQLite::Statement &row, int column) {
  return QString::fromStdString(row.getColumn(column).getString());
}

QDateTime timeOf(SQLite::Statement &row, int column) {
  return QDateTime::fromMSecsSinceEpoch(row.getColumn(column).getInt64(), Qt::UTC);
}

void historyOneByOne(benchmark::State &state) {
  const auto picks = static_cast<std::size_t>(state.range(0));
  const SQLite::Database database(historyOf(picks).path().toStdString());
  SQLite::Statement groups(database, "SELECT DISTINCT doc, sent FROM Picking");
  SQLite::Statement times(database,
                          "SELECT min(datepicked), max(datepicked) FROM Picking WHERE doc IS ?");
  for (auto _ : state) {
    std::vector<DeliveryPickTimes> deliveries;
    while (groups.executeStep()) {
      deliveries.push_back({textOf(groups, 0), groups.getColumn(1).getInt(), {}});
    }
    groups.reset();
    for (DeliveryPickTimes &delivery : deliveries) {
      times.bind(1, delivery.doc.toStdString());
      times.executeStep();
      delivery.times = {timeOf(times, 0), timeOf(times, 1)};
      times.reset();
    }
    if (deliveries.size() != picks / kPicksOfADelivery) {
      state.SkipWithError("not every delivery");
    }
  }
}

#define HISTORY(function, name) \
  BENCHMARK(function)           \
      ->Name("history/" name)   \
      ->RangeMultiplier(10)     \
      ->Range(1'000, 1'000'000) \
      ->Unit(benchmark::kMillisecond)

HISTORY(bareHistory, "floor: one statement on the best index");
HISTORY(historyOfTheProgram, "CartonPick");
HISTORY(historyOneByOne, "peer: one query for each delivery");

}  // namespace
