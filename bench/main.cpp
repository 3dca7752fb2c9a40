#include <QCoreApplication>

#include <benchmark/benchmark.h>

int main(int argc, char **argv) {
  // Qt SQL needs an application object to find its drivers.
  const QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
