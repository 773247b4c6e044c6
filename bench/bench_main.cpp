// Times the readers and the script commands on made jobs. `make bench` runs it and holds the
// ratios of its figures against their goals.
#include <benchmark/benchmark.h>

#include "bench/cases.h"

int main(int argc, char** argv) {
  bench::addReadCases();
  bench::addQueryCases();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
