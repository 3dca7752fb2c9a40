#include <QCoreApplication>

#include <benchmark/benchmark.h>

int main(int argc, char **argv) {
  // Qt SQL finds its drivers through the application object.
  const QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
