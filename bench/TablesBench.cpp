// The usage statistics and the walk of the table removal over the drawing of a
// million lines with records, run through our host's command line with the
// module loaded.
#include <benchmark/benchmark.h>

#include "ModuleSession.h"

namespace {

using zarvel_bench::Fixture;
using zarvel_bench::fixture;
using zarvel_bench::kEntities;
using zarvel_bench::Shown;

// The statistics are printed, not kept: the transcript must show every line
// of the drawing counted.
void BM_Stat(benchmark::State& state) {
  Fixture& f = fixture();
  Shown shown(f);
  for (auto _ : state) {
    shown.clear();
    f.run(L"ZARVEL_STAT", "");
  }
  state.SetItemsProcessed(state.iterations() * kEntities);
  if (!shown.contains("Objects: " + std::to_string(kEntities))) {
    state.SkipWithError("the statistics did not count the drawing");
  }
}

// The walk stops once every table is met, so the dialog comes at once; Esc
// leaves the tables as they are.
void BM_RmUnusedDialog(benchmark::State& state) {
  Fixture& f = fixture();
  Shown shown(f);
  for (auto _ : state) {
    shown.clear();
    f.run(L"ZARVEL_RMUNUSED", "*Cancel*\n");
  }
  if (!shown.contains("Used: Parcels, Roads")) {
    state.SkipWithError("the tables in use were not found");
  }
}

BENCHMARK(BM_Stat)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_RmUnusedDialog)->Unit(benchmark::kMillisecond)->MinTime(1.0);

}  // namespace

BENCHMARK_MAIN();
