#include "BenchStore.h"
#include "ProgramWork.h"
#include "SampleData.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <benchmark/benchmark.h>
#include <simdjson.h>

// The answer to a lookup: from the body in memory to the boxes with their earlier picks.
namespace {

/// Returns the size of the delivery, with twenty lines per box.
sample::DeliverySize sizeOf(const benchmark::State &state) {
  const auto lines = static_cast<std::size_t>(state.range(0));
  return {.lines = lines, .boxes = lines / 20};
}

void import(benchmark::State &state) {
  const sample::DeliverySize size = sizeOf(state);
  const QByteArray body = sample::deliveryJson(size);
  const BenchStore store;
  sample::storePicks(store.context(), size, size.lines / 5);
  std::size_t boxCount = 0;
  for (auto _ : state) {
    const program::Delivery delivery = program::importDelivery(body, store.context());
    boxCount = delivery.boxes.size();
  }
  if (boxCount != size.boxes) {
    state.SkipWithError("the boxes are not those of the delivery");
  }
}

void simdjsonAlone(benchmark::State &state) {
  const QByteArray body = sample::deliveryJson(sizeOf(state));
  const simdjson::padded_string text(body.constData(), static_cast<std::size_t>(body.size()));
  for (auto _ : state) {
    simdjson::dom::parser parser;
    benchmark::DoNotOptimize(parser.parse(text).get_array().value().size());
  }
}

void qtAlone(benchmark::State &state) {
  const QByteArray body = sample::deliveryJson(sizeOf(state));
  for (auto _ : state) {
    benchmark::DoNotOptimize(QJsonDocument::fromJson(body).array().size());
  }
}

#define IMPORT(function, name)        \
  BENCHMARK(function)                 \
      ->Name("import/" name)          \
      ->RangeMultiplier(10)           \
      ->Range(1'000, 1'000'000)       \
      ->Unit(benchmark::kMillisecond) \
      ->UseRealTime()

IMPORT(simdjsonAlone, "floor: simdjson parsing alone");
IMPORT(import, "CartonPick");
IMPORT(qtAlone, "peer: QJsonDocument parsing alone");

}  // namespace
