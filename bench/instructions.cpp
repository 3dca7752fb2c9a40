#include "BenchStore.h"
#include "ProgramWork.h"
#include "SampleData.h"
#include "support/TestProgram.h"

#include <QCoreApplication>

#include <functional>
#include <map>
#include <string>
#include <valgrind/callgrind.h>

// Runs the operation of the program that the argument names, for callgrind, which counts only the
// instructions of the operation itself.

namespace {

void counted(const std::function<void()> &work) {
  CALLGRIND_START_INSTRUMENTATION;
  work();
  CALLGRIND_STOP_INSTRUMENTATION;
}

void catalogue() {
  const QByteArray body = sample::catalogueJson(10'000);
  const BenchStore store;
  counted([&] { program::storeCatalogue(body, store.path()); });
}

void import() {
  constexpr sample::DeliverySize kSize{.lines = 10'000, .boxes = 500};
  const QByteArray body = sample::deliveryJson(kSize);
  const BenchStore store;
  sample::storePicks(store.context(), kSize, kSize.lines / 5);
  counted([&] { program::importDelivery(body, store.context()); });
}

void scan() {
  constexpr std::size_t kArticles = 10'000;
  constexpr std::size_t kScans = 1'000;
  const BenchStore store;
  program::storeCatalogue(sample::catalogueJson(kArticles), store.path());
  const CodePositions lines(std::vector<BoxLine>(1));
  counted([&] {
    for (std::size_t i = 0; i < kScans; ++i) {
      program::scan(lines, store.context(), sample::barcode(i * 7'919 % kArticles));
    }
  });
}

void history() {
  const BenchStore store;
  sample::storeHistory(store.context(), 10'000, 200);
  counted([&] { static_cast<void>(store.context().deliveryPickTimes()); });
}

void confirm() {
  constexpr int kBoxes = 1'000;
  QList<TestLine> lines;
  for (int i = 0; i < kBoxes; ++i) {
    lines.append({.carton = QStringLiteral("C%1").arg(i), .item = QString::number(i), .qty = 2});
  }
  TestProgram tablet;
  tablet.enterPicking();
  tablet.startPicking(lines);
  counted([&] {
    for (int box = 0; box < 20; ++box) {
      tablet.master().tblBoxes->touchRow(box);
      tablet.enterQuantity(0, QStringLiteral("1"));
    }
  });
}

}  // namespace

int main(int argc, char **argv) {
  const QCoreApplication application(argc, argv);
  static const std::map<std::string, void (*)()> kWorks{{"catalogue", catalogue},
                                                        {"confirm", confirm},
                                                        {"history", history},
                                                        {"import", import},
                                                        {"scan", scan}};
  const auto work = kWorks.find(argc == 2 ? argv[1] : "");
  if (work == kWorks.end()) {
    return 2;
  }
  work->second();
  return 0;
}
