// How a case is timed, and the two families of cases.
#pragma once

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <ctime>
#include <string>

namespace bench {

inline double cpuSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Registers a case. `prepare()` makes what one iteration works on, `run(prepared)` is timed, and
/// what both return is destroyed outside the timed part. Before it the allocator gives back what
/// earlier cases freed: it would otherwise do so within whichever case comes next.
template <class Prepare, class Run>
void addCase(const std::string& name, int iterations, Prepare prepare, Run run) {
  benchmark::RegisterBenchmark(name.c_str(),
                               [=](benchmark::State& state) {
                                 for (auto iteration : state) {
                                   (void)iteration;
                                   auto prepared = prepare();
                                   malloc_trim(0);
                                   const double begin = cpuSeconds();
                                   auto result = run(prepared);
                                   const double end = cpuSeconds();
                                   benchmark::DoNotOptimize(result);
                                   state.SetIterationTime(end - begin);
                                 }
                               })
      ->UseManualTime()
      ->Unit(benchmark::kMicrosecond)
      ->Iterations(iterations);
}

/// How often a case runs per repetition: small jobs often enough for the clock. From 1,000 pieces
/// on, where growth is measured, all run once, so that none finds its job in the processor's
/// caches.
inline int iterationsFor(int pieces) {
  return pieces < 1000 ? 4000 / pieces : 1;
}

/// Parse, copy, free and read: "<format>.<spelling>/<pieces>/<what>".
void addReadCases();

/// The script commands, their floors and the scan: "<query>/<pieces>/<what>".
void addQueryCases();

}  // namespace bench
