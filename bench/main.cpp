// The benchmark program. Names are <record>/<direction>/<destination>/<what>, where <what> is
// `convert` for the library and otherwise what it is compared with.
#include <benchmark/benchmark.h>

#include <future>
#include <thread>

#include "bench/cases.h"

int main(int argc, char** argv) {
  zorl2_bench::RegisterEntryCases();
  zorl2_bench::RegisterStateCases();
  zorl2_bench::RegisterSmallCases();
  zorl2_bench::RegisterCheckCases();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  // A second thread exists, as in a manager: before it, the C library's heap uses no lock, and
  // cases with one and two threads would not be comparable.
  std::promise<void> measured;
  std::thread idle([done = measured.get_future()] { done.wait(); });
  benchmark::RunSpecifiedBenchmarks();
  measured.set_value();
  idle.join();
  return 0;
}
