// The benchmark program. Names are <record>/<direction>/<destination>/<what>, where <what> is
// `convert` for the library and otherwise the floor beside it.
#include <benchmark/benchmark.h>

#include "bench/cases.h"

int main(int argc, char** argv) {
  zorl2_bench::RegisterEntryCases();
  zorl2_bench::RegisterStateCases();
  zorl2_bench::RegisterSmallCases();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
