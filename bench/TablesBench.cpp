// The usage statistics and the walk of the table removal over the drawing of a
// million lines with records, run through our host's command line with the
// module loaded.
#include <benchmark/benchmark.h>

#include <sstream>

#include "ModuleSession.h"

namespace {

using zarvel_bench::Fixture;
using zarvel_bench::fixture;
using zarvel_bench::kEntities;

// The statistics are printed, not kept: the transcript must show every line
// of the drawing counted.
void BM_Stat(benchmark::State& state) {
  Fixture& f = fixture();
  std::ostringstream shown;
  std::streambuf* const dropped = f.out.rdbuf(shown.rdbuf());
  for (auto _ : state) {
    shown.str("");
    f.run(L"ZARVEL_STAT", "");
  }
  f.out.rdbuf(dropped);
  state.SetItemsProcessed(state.iterations() * kEntities);
  if (shown.str().find("Objects: " + std::to_string(kEntities)) == std::string::npos) {
    state.SkipWithError("the statistics did not count the drawing");
  }
}

// The walk stops once every table is met, so the dialog comes at once; Esc
// leaves the tables as they are.
void BM_RmUnusedDialog(benchmark::State& state) {
  Fixture& f = fixture();
  std::ostringstream shown;
  std::streambuf* const dropped = f.out.rdbuf(shown.rdbuf());
  for (auto _ : state) {
    shown.str("");
    f.run(L"ZARVEL_RMUNUSED", "*Cancel*\n");
  }
  f.out.rdbuf(dropped);
  if (shown.str().find("Used: Parcels, Roads") == std::string::npos) {
    state.SkipWithError("the tables in use were not found");
  }
}

BENCHMARK(BM_Stat)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_RmUnusedDialog)->Unit(benchmark::kMillisecond)->MinTime(1.0);

}  // namespace

BENCHMARK_MAIN();
